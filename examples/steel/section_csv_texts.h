// Numbers of the texts in section_csv_texts.inc.
#pragma once

enum SectionCsvText : unsigned short {
    kCannotBeRead = 2001,
    kBadHeading,
    kFieldCount,
    kBadDesignation,
    kBadValue,
    kTwice,
    kNoSections = 2015,  ///< the table's name
};
