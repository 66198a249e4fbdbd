#pragma once

#include "kiv/KivModelFile.h"

#include "support/ModelTexts.h"

#include <gmock/gmock.h>
#include <string>
#include <vector>

// Model files that are read from texts, and what is said against them.

inline LoadedModel load(const std::string& text)
{
    return parseModel(text, "m.json");
}

template <class Element, class Elements>
const Element& at(const Elements& elements, std::size_t index)
{
    return static_cast<const Element&>(*elements.at(index));
}

template <class Element>
std::vector<const Element*> listOf(const KivSequenceOf<Element>& elements)
{
    return {elements.begin(), elements.end()};
}

// What the reader says against a text; empty when it takes it.
inline std::string complaintAbout(const std::string& text)
{
    try {
        (void)parseModel(text, "m.json");
        return "";
    } catch (const ModelFileError& error) {
        return error.what();
    }
}

// The place is a pointer, or line and column where the JSON itself is broken.
inline void expectComplaint(const std::string& text, const std::string& place, const std::string& part)
{
    const bool isPointer = place.empty() || place.front() == '/';
    const std::string pointer = place.empty() ? "" : place + ": ";
    const std::string complaint = complaintAbout(text);
    const std::string line = complaint.substr(0, complaint.find('\n'));
    const std::string behind =
        isPointer ? ": error: " + pointer + "expected " : "m.json:" + place + ": error: expected ";
    EXPECT_THAT(line, testing::AllOf(testing::StartsWith("m.json:"), testing::HasSubstr(behind),
                                     testing::HasSubstr(json(part))))
        << text.substr(0, 300);
}
