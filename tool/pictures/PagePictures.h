#pragma once

#include "reader/index/Index.h"

#include <cstddef>
#include <string>
#include <vector>

/// Draws the pictures of one page, which share their room: one class may stand in many diagrams.
class PagePictures {
public:
    /// `count` pictures will be asked for, from files of `inputSize` bytes together.
    PagePictures(std::string pageName, std::size_t count, double inputSize);

    /// SVG whose parts are called as in no other picture of the page; the empty text where there is no room left.
    /// Throws `render::ImageError`.
    [[nodiscard]] std::string draw(const reader::Document& document, const reader::Index& index,
                                   const reader::Diagram& diagram);
    /// Says on standard error which are not as they are meant, and how many were left out.
    void reportLeftOut() const;

private:
    std::string page;
    std::size_t expected;
    double bytesLeft;
    std::size_t number = 0;
    std::size_t leftOut = 0;
    std::vector<std::string> warnings;
};

/// Bytes of all files of a document.
[[nodiscard]] double sizeOf(const reader::Document& document);
