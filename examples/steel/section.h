// A steel section and the columns of its table.
#pragma once

#include <array>
#include <cstddef>

#include "toolbox/strings.h"

struct Section {
    CString designation;  ///< "IPE 300"
    double h = 0, b = 0, tw = 0, tf = 0, r = 0;
    double area = 0, mass = 0;
    double iY = 0, welY = 0, wplY = 0, radiusY = 0;
    double iZ = 0, welZ = 0, radiusZ = 0;

    bool operator==(const Section&) const = default;
};

/// Bytes that a designation may have.
inline constexpr std::size_t kDesignationMax = 16;

/// One number of a section: how the file names it, its unit, its key and how the report prints it
/// unless the user wants it otherwise. Keys differ not only in case: a profile file ignores it.
struct Column {
    const char* name;
    const char* key;
    const char* unit;
    int width;
    int precision;  ///< decimals; 0: whole numbers only
    double Section::*value;
};

inline constexpr std::array<Column, 14> kColumns = {{
    {"h", "H", "mm", 4, 0, &Section::h},
    {"b", "B", "mm", 3, 0, &Section::b},
    {"tw", "TW", "mm", 4, 1, &Section::tw},
    {"tf", "TF", "mm", 4, 1, &Section::tf},
    {"r", "R", "mm", 2, 0, &Section::r},
    {"A", "A", "cm2", 5, 2, &Section::area},
    {"G", "G", "kg/m", 5, 1, &Section::mass},
    {"Iy", "IY", "cm4", 6, 2, &Section::iY},
    {"Wel.y", "WELY", "cm3", 5, 2, &Section::welY},
    {"Wpl.y", "WPLY", "cm3", 5, 2, &Section::wplY},
    {"iy", "RADY", "cm", 5, 2, &Section::radiusY},
    {"Iz", "IZ", "cm4", 5, 2, &Section::iZ},
    {"Wel.z", "WELZ", "cm3", 5, 2, &Section::welZ},
    {"iz", "RADZ", "cm", 4, 2, &Section::radiusZ},
}};
