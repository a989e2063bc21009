// User-defined keys: an application's manager, and a label template expanded for each section.
//
//     keys_sample <profile file> [<key> <new description>]
//
// With a key and a description it changes the key's description and saves it; the next run finds
// it.
#include <iostream>

#include "toolbox/keys.h"

namespace {

struct Section {
    const char* name;
    double depth;  // mm
    int mass;      // kg/m
};

constexpr Section kSections[] = {
    {"IPE 200", 200.0, 22}, {"IPE 300", 300.0, 42}, {"HEB 260", 260.0, 93}};

enum Key : UINT { kName = 1, kDepth = 2, kMass = 3 };

/// What the application adds to the library's manager: where the users' changes are kept, and the
/// values of the section that is current.
class SectionKeys : public TokenizerUDManager {
  public:
    explicit SectionKeys(const char* profile) : profile_(profile) {}

    void setCurrent(const Section& section) { current_ = &section; }

    RWCString getProfilePath() override { return profile_; }

    int getKeyValue(UINT id, FormatedValue* value) override {
        if (!current_) return 0;
        switch (id) {
            case kName:
                static_cast<StringFormatedValue&>(*value) = RWCString(current_->name);
                return 1;
            case kDepth:
                static_cast<RealFormatedValue&>(*value) = current_->depth;
                return 1;
            case kMass:
                static_cast<NumberFormatedValue&>(*value) = current_->mass;
                return 1;
            default:
                return 0;
        }
    }

  private:
    RWCString profile_;
    const Section* current_ = nullptr;
};

void declare(SectionKeys& keys, UINT id, const char* key, const char* description,
             const char* header, const char* units, const FormatType& format) {
    UDKeyData data((RWCString(key)));
    data.setDescStr(description);
    data.setHeaderStr(header);
    data.setUnitsStr(units);
    data.setFormat(format);
    keys.addKey(id, data);
}

void declareKeys(SectionKeys& keys) {
    StringFormat name;
    name.setFormat(8, Left);
    RealFormat depth;
    depth.setFormat(8, 1, Right);
    NumberFormat mass;
    mass.setFormat(5, Right);
    declare(keys, kName, "NAME", "Name of the section", "Section", "", name);
    declare(keys, kDepth, "H", "Depth of the section", "h", "mm", depth);
    declare(keys, kMass, "M", "Mass per length", "m", "kg/m", mass);
}

void printLabels(SectionKeys& keys, const RWCString& label) {
    for (const toolbox::TemplateProblem& problem : keys.checkTemplate(label)) {
        std::cout << "column " << problem.position + 1 << ": not a key: " << problem.word << '\n';
    }
    for (const Section& section : kSections) {
        keys.setCurrent(section);
        std::cout << keys.getParseString(label, 0) << '\n';
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2 && argc != 4) {
        std::cerr << "usage: keys_sample <profile file> [<key> <new description>]\n";
        return 2;
    }
    UDManager::initStaticVars();
    int failed = 0;
    {
        SectionKeys keys(argv[1]);
        declareKeys(keys);
        std::cout << keys.initUDApp() << " of the keys were changed by the user\n";
        if (argc == 4) {
            const UINT id = keys.getId(argv[2]);
            failed = !keys.setKeyDesc(id, argv[3]) || !keys.saveKey(id);
            if (failed) std::cerr << "not saved: " << argv[2] << '\n';
        }
        for (auto key = UDManager::getKeywordIterator(); key();) {
            std::cout << "$" << key.value().getKeyStr() << "$  " << key.value().getDescStr()
                      << '\n';
        }
        printLabels(keys, "$NAME$ h = $H$ mm, m = $M$ kg/m, $WY$");
        keys.freeUDApp();
    }
    UDManager::destroyStaticVars();
    return failed;
}
