// A property sheet of two pages, with typed numbers, units and rules between fields. The program
// shows it, in French when its argument is "fr", and prints the beam that the user confirmed.
#include <iostream>
#include <string_view>

#include "beam_sheet.h"
#include "toolbox/messages.h"

int main(int argc, char** argv) {
    GMSG::initStaticVars();
    int result = 1;
    {
        const GMSG service;
        const bool isFrench = argc > 1 && std::string_view(argv[1]) == "fr";
        GMSG::language = isFrench ? GMSG::French : GMSG::English;
        Beam beam;
        if (editBeam(beam)) {
            RWCString text;
            GMSG::getString(IDS_RESULT, text, beam.name.value(), beam.span.value(), beam.steel,
                            beam.force.value(), beam.from.value(), beam.to.value());
            std::cout << text << '\n';
            result = 0;
        }
    }
    GMSG::destroyStaticVars();
    return result;
}
