// An application's manager with a few keys, and a profile file of its own for each test.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <vector>

#include "support/temp_folder.h"
#include "toolbox/keys.h"

using Ids = RWTValOrderedVector<UINT>;
inline constexpr UINT kNone = 0xFFFFFFFF;

/// A manager that knows its values by id, as text. A key without one cannot be fetched.
class TestManager : public TokenizerUDManager {
  public:
    RWCString getProfilePath() override { return path; }
    int getKeyValue(UINT id, FormatedValue* value) override {
        fetched.push_back(id);
        if (!values.contains(id)) return 0;
        const std::string& text = values[id];
        if (value->isReal()) {
            dynamic_cast<RealFormatedValue&>(*value) = std::stod(text);
        } else if (value->isNumber()) {
            dynamic_cast<NumberFormatedValue&>(*value) = std::stoi(text);
        } else {
            dynamic_cast<StringFormatedValue&>(*value) = RWCString(text);
        }
        return 1;
    }
    RWCString getKeyUnits(UINT id) override { return id == 4 ? "mm" : ""; }

    std::string path;
    std::map<UINT, std::string> values;
    std::vector<UINT> fetched;
};

inline UDKeyData makeKey(const char* key, const FormatType& format, const char* description = "") {
    UDKeyData data((RWCString(key)));
    data.setFormat(format);
    data.setDescStr(description);
    return data;
}

template <class Format, class... Fields>
Format made(Fields... fields) {
    Format format;
    format.setFormat(fields...);
    return format;
}
inline NumberFormat number(int width, Justification justify = Right) {
    return made<NumberFormat>(width, justify);
}
inline RealFormat real(int width, int precision) {
    return made<RealFormat>(width, precision, Right);
}

/// A number below `n`, the same in every run.
inline unsigned pick(std::size_t n) {
    static std::minstd_rand chance;
    return static_cast<unsigned>(chance() / 65536 % n);
}

class KeysFixture : public ::testing::Test {
  protected:
    KeysFixture() {
        UDManager::initStaticVars();
        manager_.path = folder_ / "keys.ini";
    }
    ~KeysFixture() override { UDManager::destroyStaticVars(); }

    int declare(UINT id, UDKeyData data) { return manager_.addKey(id, data); }

    /// Keys 1 VOLT (integer, width 5), 2 A (real 8.2), 3 NAME (string 6), 4 LEN (real 8.2).
    void declareUsualKeys() {
        declare(1, makeKey("VOLT", number(5), "Voltage"));
        declare(2, makeKey("A", real(8, 2), "Area"));
        declare(3, makeKey("NAME", made<StringFormat>(6, Left), "Name"));
        UDKeyData length = makeKey("LEN", real(8, 2), "Length");
        length.setUnitsStr("TVUNITS");
        length.setHeaderStr("L");
        declare(4, length);
    }
    void startWithUsualKeys() {
        declareUsualKeys();
        manager_.initUDApp();
    }

    /// Ends the registry and begins anew with the same profile, as the next run would.
    void restart() {
        UDManager::destroyStaticVars();
        UDManager::initStaticVars();
        declareUsualKeys();
    }

    TempFolder folder_;
    TestManager manager_;
};
