// What the sheet edits: a beam with a load on a part of it.
#pragma once

#include "resource.h"
#include "toolbox/dates.h"
#include "toolbox/numbers.h"
#include "toolbox/text.h"

/// The texts and numbers bring the rules of their entry with them, from the resources.
struct Beam {
    Beam();

    TvString name{IDS_NAME};
    TvDouble span{IDS_SPAN};  // m
    CString steel = "S235";
    TarvDate checked;
    TvDouble force{IDS_FORCE};                // kN/m
    TvDouble from{IDS_PLACE}, to{IDS_PLACE};  // m
};

/// True when the user changed the beam.
[[nodiscard]] bool editBeam(Beam& beam);
