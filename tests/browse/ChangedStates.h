#pragma once

#include "compare/changes/Changes.h"
#include "compare/changes/Pairing.h"
#include "reader/PetalTexts.h"

#include <string>
#include <vector>

/// Two states, and what is different in them.
struct States {
    States(const std::string& oldText, const std::string& newText)
        : oldDocument(read(oldText)), newDocument(read(newText)), before(oldDocument, compare::Depth::meaning),
          after(newDocument, compare::Depth::meaning)
    {
        compare::pair(before, after);
        changes = compare::changesOf(states);
    }

    reader::Document oldDocument;
    reader::Document newDocument;
    compare::Snapshot before;
    compare::Snapshot after;
    compare::Comparison states{before, after, compare::Depth::meaning};
    std::vector<compare::Change> changes;
};
