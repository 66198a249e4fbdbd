#include "model/ExportState.h"

KivModel* theTrueModel = nullptr;
KivLog* localLog = nullptr;
KivOptionList* theOptions = nullptr;

bool useGraphicalInfo = true;
bool useQualifier = false;
bool exportFKattr = false;
bool showConstraint = false;

float XLog = 100.0F;
float YLog = 100.0F;
float XScale = 0.0F;
float YScale = 0.0F;

int multiplier = 0;
long nextFreeViewNumber = 0;

KivDesignPackage* theTmpPackage = nullptr;
