#pragma once

#include "kiv/KivMessages.h"
#include "kiv/KivOptions.h"
#include "kiv/KivPackage.h"

/// What one export is about: set by `run` before anything is written, read by the writers. Process-wide, since the
/// host runs one export at a time.

extern KivModel* theTrueModel;
extern KivLog* localLog;
extern KivOptionList* theOptions;

/// Take positions, sizes, colours and line points from the model.
extern bool useGraphicalInfo;
/// Generate association-end qualifiers from keys.
extern bool useQualifier;
/// Write attributes that belong to foreign keys.
extern bool exportFKattr;
/// Write constraint labels on association views.
extern bool showConstraint;

/// Scale options (percent) divided by 100.
extern float XLog;
extern float YLog;
/// The factors applied to model coordinates: copies of `XLog` and `YLog` that each package takes before its diagrams.
extern float XScale;
extern float YScale;

/// The numbering counter after numbering: the distance between the view numbers of two diagrams.
extern int multiplier;
/// The next number that no view of the file can have otherwise, for diagrams that run out of numbers. Starts at the
/// number of class diagrams in the model times the counter.
extern long nextFreeViewNumber;

/// The "Logical View" package that `run` made, if it had to make one.
extern KivDesignPackage* theTmpPackage;
