#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

// Values that programs stumble over.

// A reference that is still to be led somewhere.
constexpr const char* anyId = "?";

constexpr std::array<std::string_view, 34> awkwardTexts = {
    "",
    "a",
    "\"",
    "\\",
    "a\\",
    "\\\\",
    "\n",
    "\n\n",
    "a\nb",
    "a\r\nb\r\n",
    "\r",
    "a\"b",
    "|",
    "||\n",
    ")",
    "(",
    "(\"",
    "\")",
    "\n\t)",
    "\n|\"",
    "C:\\temp\\new\n",
    "::",
    "<<x>>",
    "{}",
    "\t",
    "\x01\x7F",
    "äöü €",
    "😀",
    "Logical View",
    "My Logical View 2",
    "Interface",
    "True",
    "0..n",
    "n",
};

constexpr std::array<std::string_view, 19> dataTypes = {
    "BINARY",        "CHAR",    "DATE",    "DOUBLE",   "VARBINARY", "LONGVARBINARY", "INTEGER",
    "AUTOINCREMENT", "NUMERIC", "REAL",    "SMALLINT", "TIME",      "TIMESTAMP",     "VARCHAR",
    "LONGVARCHAR",   "BOOLEAN", "TINYINT", "",         "integer",
};

constexpr std::array<std::int64_t, 26> awkwardIntegers = {
    std::numeric_limits<int>::min(),
    std::numeric_limits<int>::max(),
    -32768,
    32767,
    -1,
    0,
    1,
    2,
    3,
    4,
    9,
    10,
    11,
    17,
    18,
    19,
    20,
    21,
    -2,
    -19,
    -20,
    -21,
    100,
    1000,
    65536,
    16777215,
};

constexpr std::array<std::string_view, 10> awkwardPoints = {
    "(",
    ")",
    "()",
    "(,)",
    "(1,2",
    "( 3,\t-4)",
    "(99999999999,-99999999999)",
    "(0,0) ",
    "(+1,1)(1,1)",
    "(-2147483648,2147483647)",
};

constexpr std::size_t mostElementsDrawn = 60;
