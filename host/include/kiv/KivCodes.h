#pragma once

/// Names of the codes that stand in int fields. A field may hold any int; what other values count as is said here.

/// Of attributes, operations, roles and generalizations; other values count as `Implementation`. Of classes: every
/// value but `Public` does.
namespace KivVisibility {
inline constexpr int Public = 0;
inline constexpr int Protected = 1;
inline constexpr int Private = 2;
inline constexpr int Implementation = 3;
} // namespace KivVisibility

/// Of classes; other values count as `Class`.
namespace KivClassType {
inline constexpr int DataClass = 0;
inline constexpr int Class = 1;
inline constexpr int ParameterizedClass = 2;
inline constexpr int InstantiatedClass = 3;
inline constexpr int ClassUtility = 4;
inline constexpr int ParameterizedClassUtility = 5;
inline constexpr int InstantiatedClassUtility = 6;
inline constexpr int Metaclass = 8;
inline constexpr int Interface = 9;
} // namespace KivClassType

/// Of classes and operations; other values count as `Synchronous`.
namespace KivConcurrency {
inline constexpr int Sequential = 0;
inline constexpr int Guarded = 1;
inline constexpr int Active = 2;
inline constexpr int Synchronous = 3;
} // namespace KivConcurrency

/// Of attributes and roles; other values count as `Unspecified`.
namespace KivContainment {
inline constexpr int ByValue = 0;
inline constexpr int ByReference = 1;
inline constexpr int Unspecified = 2;
} // namespace KivContainment
