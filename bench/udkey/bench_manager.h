// An application's manager with many keys, whose values are ready at hand.
#pragma once

#include <filesystem>
#include <string>

#include "toolbox/keys.h"

class BenchManager : public TokenizerUDManager {
  public:
    explicit BenchManager(std::string profile) : profile_(std::move(profile)) {}

    RWCString getProfilePath() override { return profile_; }
    int getKeyValue(UINT id, FormatedValue* value) override {
        if (!hasValues) return 0;
        if (id % 3 == 1) {
            static_cast<RealFormatedValue&>(*value) = 0.37 * id;
        } else if (id % 3 == 0) {
            static_cast<NumberFormatedValue&>(*value) = static_cast<int>(id);
        } else {
            static_cast<StringFormatedValue&>(*value) = RWCString("HEB 300");
        }
        return 1;
    }

    static std::string keyString(UINT id) { return "KEY_" + std::to_string(id); }

    /// Empties the registry and declares keys with ids from 0, their kinds taking turns.
    void declare(UINT keys) {
        destroyStaticVars();
        initStaticVars();
        for (UINT id = 0; id < keys; ++id) declareOne(id);
    }

    void declareOne(UINT id) {
        UDKeyData data((RWCString(keyString(id))));
        data.setDescStr("Description of " + keyString(id));
        data.setHeaderStr("header");
        NumberFormat number;
        number.setFormat(8, Right);
        RealFormat real;
        real.setFormat(10, 3, Right);
        StringFormat string;
        string.setFormat(10, Left);
        const FormatType* kinds[] = {&number, &real, &string};
        data.setFormat(*kinds[id % 3]);
        addKey(id, data);
    }

    bool hasValues = true;

  private:
    std::string profile_;
};

/// A profile file of the benchmark's own.
inline std::string benchProfile() {
    return (std::filesystem::temp_directory_path() / "toolbox_keys_bench.ini").string();
}

/// Ends the program when the library and the literal algorithm differ on a generated template.
void checkExpansion();
