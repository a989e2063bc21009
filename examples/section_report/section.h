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

/// One number of a section: how the file names it, its unit and how the report prints it.
struct Column {
    const char* name;
    const char* unit;
    int width;
    int precision;  ///< decimals; 0: whole numbers only
    double Section::*value;
};

inline constexpr std::array<Column, 14> kColumns = {{
    {"h", "mm", 4, 0, &Section::h},
    {"b", "mm", 3, 0, &Section::b},
    {"tw", "mm", 4, 1, &Section::tw},
    {"tf", "mm", 4, 1, &Section::tf},
    {"r", "mm", 2, 0, &Section::r},
    {"A", "cm2", 5, 2, &Section::area},
    {"G", "kg/m", 5, 1, &Section::mass},
    {"Iy", "cm4", 6, 2, &Section::iY},
    {"Wel.y", "cm3", 5, 2, &Section::welY},
    {"Wpl.y", "cm3", 5, 2, &Section::wplY},
    {"iy", "cm", 5, 2, &Section::radiusY},
    {"Iz", "cm4", 5, 2, &Section::iZ},
    {"Wel.z", "cm3", 5, 2, &Section::welZ},
    {"iz", "cm", 4, 2, &Section::radiusZ},
}};
