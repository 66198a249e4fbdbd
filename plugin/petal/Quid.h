#pragma once

#include <array>

/// The prefix of a quid, chosen by what it identifies.
struct QuidForm {
    static constexpr std::size_t length = 6;
    std::array<char, 8> prefix; ///< the last two are zeros: eight bytes are copied in one go
};

inline constexpr QuidForm iquid = {"3449E0"};  ///< operations, roles, uses and realize relationships, class diagrams
inline constexpr QuidForm nquid = {"3449E8"};  ///< inheritance relationships and views
inline constexpr QuidForm pquid = {"344A14"};  ///< packages and category views
inline constexpr QuidForm equid = {"3449E2"};  ///< classes, enumeration classes included
inline constexpr QuidForm aquid = {"3449E4"};  ///< attributes and qualifiers
inline constexpr QuidForm asquid = {"3449E6"}; ///< associations and association views

/// The identifier by which Rose ties objects together: a prefix and a number in hexadecimal.
struct Quid {
    QuidForm form;
    unsigned long number;
};

/// `number` in at least six upper-case hexadecimal digits behind the prefix of `form`. A larger number is written
/// whole, which makes the quid longer than twelve characters.
[[nodiscard]] constexpr Quid makeQuid(QuidForm form, long number)
{
    return {form, static_cast<unsigned long>(number)};
}
