#pragma once

#include "model/NumberBlocks.h"

/// The view numbers of a diagram's notes, attach lines and free labels: those of the diagram's own block behind its
/// own number, and when they run out, numbers that no other view of the file can have.
class NoteNumbers {
public:
    explicit NoteNumbers(long diagramNumber) : next(diagramNumber + classDiagramBlock::notes) {}
    int take();

private:
    long next;
    long left = classDiagramBlock::size - classDiagramBlock::notes;
};
