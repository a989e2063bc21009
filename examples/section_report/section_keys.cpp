// Keys are declared in the order of their identifiers: the designation, the columns of the table,
// what the grid computes.
#include "section_keys.h"

#include <array>
#include <charconv>
#include <cstring>

#include "declared_keys.h"
#include "section_texts.h"

namespace {

struct Computed {
    const char* key;
    const char* name;
    const char* unit;
    int width;
    int precision;
    double BeamFigures::*value;
};
constexpr std::array<Computed, 5> kComputed = {{
    {"MASS", "m", "kg/m", 6, 2, &BeamFigures::mass},
    {"MODULUS", "W", "cm3", 6, 1, &BeamFigures::modulus},
    {"WEIGHT", "P", "kg", 7, 1, &BeamFigures::weight},
    {"STRESS", "s", "N/mm2", 7, 1, &BeamFigures::stress},
    {"F", "f", "mm", 8, 2, &BeamFigures::deflection},
}};

// Identifiers; the texts that describe the keys are numbered in the same order.
constexpr UINT kDesignation = 1;
constexpr UINT kFirstColumn = 2;
constexpr UINT kFirstComputed = kFirstColumn + UINT{kColumns.size()};
constexpr UINT kEnd = kFirstComputed + UINT{kComputed.size()};

DeclaredKey declared(UINT id, const char* key, const RWCString& header, const char* units) {
    return {key, header, units, static_cast<unsigned short>(kFirstDescription + id - kDesignation)};
}

void declareAll(UDManager& keys) {
    StringFormat designation;
    designation.setFormat(11, Left);
    declareKey(keys, kDesignation, declared(kDesignation, "NAME", text(kNameHeader), ""),
               designation);
    UINT id = kFirstColumn;
    for (const Column& column : kColumns) {
        declareNumber(keys, id, declared(id, column.key, column.name, column.unit), column.width,
                      column.precision);
        ++id;
    }
    for (const Computed& computed : kComputed) {
        declareNumber(keys, id, declared(id, computed.key, computed.name, computed.unit),
                      computed.width, computed.precision);
        ++id;
    }
}

RWTValOrderedVector<UINT> idsOf(UINT first, UINT end) {
    RWTValOrderedVector<UINT> ids;
    ids.append(kDesignation);
    for (UINT id = first; id < end; ++id) ids.append(id);
    return ids;
}

/// "8" or "8.2".
bool readFormat(const char* text, int& width, int& decimals) {
    const char* const end = text + std::strlen(text);
    const auto [point, error] = std::from_chars(text, end, width);
    if (error != std::errc() || width < 1) return false;
    if (point == end) return true;
    const auto [last, second] = std::from_chars(point + 1, end, decimals);
    return *point == '.' && second == std::errc() && last == end && decimals >= 0;
}

}  // namespace

SectionKeys::SectionKeys(const RWCString& profile, const Beam& beam)
    : profile_(profile), grid_(beam) {
    declareAll(*this);
    restored_ = initUDApp();
}

bool SectionKeys::describe(const char* key, const char* description) {
    const UINT id = getId(key);
    const UDKeyData before = getKeyData(id);
    return keep(id, before, setKeyDesc(id, description));
}

bool SectionKeys::format(const char* key, const char* format) {
    constexpr int kNone = -1;
    int width = 0;
    int decimals = kNone;
    if (!readFormat(format, width, decimals)) return false;
    const UINT id = getId(key);
    const UDKeyData before = getKeyData(id);
    UDKeyData changed = before;
    FormatType& changing = *changed.getFormat();
    if (!changing.setWidth(width)) return false;
    // A format of whole numbers takes decimals and ignores them.
    if (decimals != kNone && !(changing.isReal() && changing.setPrecision(decimals))) return false;
    return keep(id, before, setKeyFormat(id, changing));
}

bool SectionKeys::keep(UINT id, const UDKeyData& before, int changed) {
    if (!changed) return false;
    if (saveKey(id)) return true;
    setKeyDesc(id, before.getDescStr());
    setKeyFormat(id, *before.getFormat());
    return false;
}

void SectionKeys::setCurrent(const Section& section) {
    section_ = section;
    figures_ = grid_.compute(section);
}

RWTValOrderedVector<UINT> SectionKeys::sectionColumns() {
    return idsOf(kFirstColumn, kFirstComputed);
}
RWTValOrderedVector<UINT> SectionKeys::beamColumns() {
    return idsOf(kFirstComputed, kEnd);
}

int SectionKeys::getKeyValue(UINT id, FormatedValue* value) {
    if (id == kDesignation) {
        static_cast<StringFormatedValue&>(*value) = RWCString(section_.designation);
        return 1;
    }
    if (id < kFirstColumn || id >= kEnd) return 0;
    if (id < kFirstComputed) return setNumber(value, section_.*kColumns[id - kFirstColumn].value);
    return setNumber(value, figures_.*kComputed[id - kFirstComputed].value);
}
