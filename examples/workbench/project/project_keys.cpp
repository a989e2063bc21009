// One table declares all keys; a value is computed when it is asked for.
#include "project/project_keys.h"

#include <array>
#include <numeric>
#include <string>
#include <string_view>

#include "resources/workbench_texts.h"
#include "toolbox/formats.h"
#include "toolbox/messages.h"

namespace {

constexpr int kWidest = 80;

double force(const BeamValues& of) {
    return std::transform_reduce(of.beam.loads.begin(), of.beam.loads.end(), 0.0, std::plus<>(),
                                 [](const PointLoad& load) { return load.force; });
}

/// A number of a beam; texts have no `value`. A header that is a word is a text of the program.
struct Quantity {
    const char* key;
    const char* header;
    const char* units;
    int width;
    int precision;
    double (*value)(const BeamValues&);
};

enum : UINT { kName = 1, kSection = 2 };

// Widths have room for what any beam within its limits gives with a section of the table, with
// fewer decimals where numbers are extreme.
constexpr std::array<Quantity, 17> kQuantities = {{
    {"NAME", nullptr, "", static_cast<int>(kNameMax), 0, nullptr},
    {"SECTION", nullptr, "", 10, 0, nullptr},
    {"L", "L", "m", 6, 2, [](const BeamValues& of) { return of.beam.span; }},
    {"Q", "q", "kN/m", 9, 2, [](const BeamValues& of) { return of.beam.uniform; }},
    {"N", "n", "", 3, 0,
     [](const BeamValues& of) { return static_cast<double>(of.beam.loads.size()); }},
    {"P", "P", "kN", 9, 2, force},
    {"WEIGHT", "G", "kg", 8, 1, [](const BeamValues& of) { return of.results.weight; }},
    {"RA", "RA", "kN", 9, 2, [](const BeamValues& of) { return of.results.leftReaction; }},
    {"RB", "RB", "kN", 9, 2, [](const BeamValues& of) { return of.results.rightReaction; }},
    {"M", "M", "kNm", 9, 2, [](const BeamValues& of) { return of.results.moment; }},
    {"X", "x", "m", 6, 2, [](const BeamValues& of) { return of.results.momentAt; }},
    {"S", "s", "N/mm2", 10, 1, [](const BeamValues& of) { return of.results.stress; }},
    {"USE", nullptr, "%", 10, 1, [](const BeamValues& of) { return of.results.use; }},
    {"F", "f", "mm", 13, 2, [](const BeamValues& of) { return of.results.deflection; }},
    {"H", "h", "mm", 5, 0, [](const BeamValues& of) { return of.section.h; }},
    {"IY", "Iy", "cm4", 9, 1, [](const BeamValues& of) { return of.section.iY; }},
    {"WELY", "Wel.y", "cm3", 8, 1, [](const BeamValues& of) { return of.section.welY; }},
}};
constexpr UINT kUsual[] = {kName, kSection, 3, 4, 6, 7, 10, 12, 13, 14};

RWCString declaredDescription(UINT id) {
    RWCString description;
    GMSG::getString(static_cast<unsigned short>(kFirstKeyDescription + id - kName), description);
    return description;
}

/// False when a reader of the text would not get the value, rounded to the decimals that it shows:
/// a format that is too narrow cuts exponents off, and numbers that have no room for one.
bool standsFor(std::string_view text, double value) {
    constexpr std::size_t kExponent = 5;  // "e+006"
    if (const std::size_t mark = text.find('e'); mark != std::string_view::npos)
        return text.size() - mark == kExponent;
    if (text.ends_with('.')) text.remove_suffix(1);
    const std::size_t point = text.find('.');
    const std::size_t decimals = point == std::string_view::npos ? 0 : text.size() - point - 1;
    RealFormatedValue whole;
    whole.setFormat(kWidest, static_cast<int>(decimals), Left);
    whole = value;
    const RWCString printed = whole.getStringValue();
    return printed.view().substr(0, printed.view().find(' ')) == text;
}

RWCString believable(const RWCString& text, double value) {
    return text.empty() || standsFor(text.view(), value) ? text : RWCString(kTooNarrow);
}

}  // namespace

ProjectKeys::ProjectKeys(const RWCString& profile) : profile_(profile) {
    UINT id = kName;
    for (const Quantity& quantity : kQuantities) {
        const UINT number = id - kName;
        RWCString header = quantity.header;
        if (!quantity.header)
            GMSG::getString(static_cast<unsigned short>(kFirstKeyHeader + number), header);
        const DeclaredKey key{quantity.key, header, quantity.units,
                              static_cast<unsigned short>(kFirstKeyDescription + number)};
        if (quantity.value) {
            declareNumber(*this, id, key, quantity.width, quantity.precision);
        } else {
            StringFormat text;
            text.setFormat(quantity.width, Left);
            declareKey(*this, id, key, text);
        }
        ++id;
    }
    initUDApp();
    for (const UINT key : all())
        if (getKeyDesc(key).empty()) setKeyDesc(key, declaredDescription(key));
    setSelection(usualColumns());
}

ProjectKeys::~ProjectKeys() {
    freeUDApp();
}

void ProjectKeys::setCurrent(const Beam& beam, const Section& section, const BeamResults& results) {
    beam_ = &beam;
    section_ = &section;
    results_ = &results;
}

RWTValOrderedVector<UINT> ProjectKeys::all() {
    RWTValOrderedVector<UINT> ids;
    for (UINT i = 0; i < kQuantities.size(); ++i) ids.append(kName + i);
    return ids;
}

RWTValOrderedVector<UINT> ProjectKeys::usualColumns() {
    RWTValOrderedVector<UINT> ids;
    for (const UINT id : kUsual) ids.append(id);
    return ids;
}

RWCString ProjectKeys::columnsText() const {
    RWCString text;
    const RWTValOrderedVector<UINT>& ids = getSelection();
    for (std::size_t i = 0; i < ids.entries(); ++i) {
        if (i > 0) text += ' ';
        text += getKey(ids[i]);
    }
    return text;
}

void ProjectKeys::selectColumns(const RWCString& text) {
    RWTValOrderedVector<UINT> ids;
    for (std::string_view rest = text.view(); !rest.empty();) {
        const std::size_t end = rest.find(' ');
        const UINT id = getId(RWCString(rest.substr(0, end)));
        if (contains(id)) ids.append(id);
        rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    }
    setSelection(ids.entries() > 0 ? ids : usualColumns());
}

int ProjectKeys::save(UINT id) {
    const RWCString description = getKeyDesc(id);
    const RWCString declared = declaredDescription(id);
    if (description == declared) setKeyDesc(id, "");
    const int saved = saveKey(id);
    setKeyDesc(id, description.empty() ? declared : description);
    return saved;
}

RWCString ProjectKeys::shown(UINT id) {
    const UDKeyData key = getKeyData(id);
    if (key.getFormat()->isReal()) {
        RealFormatedValue value;
        return getKeyValue(id, &value) ? shown(id, value) : RWCString();
    }
    if (key.getFormat()->isNumber()) {
        NumberFormatedValue value;
        return getKeyValue(id, &value) ? shown(id, value) : RWCString();
    }
    return getFormatedString(id, 1);
}

RWCString ProjectKeys::shown(UINT id, FormatedValue& value) {
    RWCString text = getFormatedString(id, value, 1);
    if (value.isReal()) return believable(text, static_cast<RealFormatedValue&>(value).getValue());
    if (value.isNumber())
        return believable(text, static_cast<NumberFormatedValue&>(value).getValue());
    return text;
}

int ProjectKeys::getKeyValue(UINT id, FormatedValue* value) {
    return beam_ ? setBeamValue(id, value, {*beam_, *section_, *results_}) : 0;
}

int setBeamValue(UINT id, FormatedValue* value, const BeamValues& of) {
    if (id < kName || id - kName >= kQuantities.size()) return 0;
    if (id == kName || id == kSection) {
        static_cast<StringFormatedValue&>(*value) =
            RWCString(id == kName ? of.beam.name : of.beam.section);
        return 1;
    }
    return setNumber(value, kQuantities[id - kName].value(of));
}

void widen(FormatedValue& value) {
    const std::string printed = value.getStringValue().str();
    const std::size_t first = printed.find_first_not_of(' ');
    if (first == std::string::npos) return;
    const std::string text = printed.substr(first, printed.find_last_not_of(' ') + 1 - first);
    if (value.isReal()) {
        auto& real = static_cast<RealFormatedValue&>(value);
        if (!standsFor(text, real.getValue())) real.setFormat(kWidest, real.getPrecision(), Left);
    } else if (value.isNumber()) {
        auto& number = static_cast<NumberFormatedValue&>(value);
        if (!standsFor(text, number.getValue())) number.setFormat(kWidest, Left);
    }
}
