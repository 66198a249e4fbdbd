#pragma once

/// The view numbers of a diagram's notes, attach lines and free labels: those of the diagram's own block behind its
/// own number, and when they run out, numbers that no other view of the file can have.
class NoteNumbers {
public:
    explicit NoteNumbers(long diagramNumber) : next(diagramNumber + 1), left(ownNumbers) {}
    int take();

private:
    static constexpr int ownNumbers = 2999;

    long next;
    int left;
};
