// The files opened last, as an application's file menu shows them.
//
// HistoricMenuFile keeps at most five names, the newest first. The application records each file
// that it opens, maps the commands of the menu's items to names, and saves and restores the list in
// a profile file, section "Files_opened", entries "File_1" (the newest) to "File_5".
//
// On Windows the names stand at the end of a menu of the window's menu bar, after a separator, as
// "&1 plan.dat". Items are changed but never removed: those beyond the list's length,
// once init() or lire() has emptied it, keep their texts. An '&' in a name is not
// doubled: it underlines the character after it.
#pragma once

#include <list>

#include "toolbox/export.h"
#include "toolbox/strings.h"
#include "toolbox/win_types.h"

/// The list and, on Windows, its menu. A copy shows its names in the same menu.
class TB_API HistoricMenuFile {
  public:
    HistoricMenuFile();
    virtual ~HistoricMenuFile();
    HistoricMenuFile(const HistoricMenuFile&);
    HistoricMenuFile& operator=(const HistoricMenuFile&);

    /// Names the window, the command of an item of the menu that holds the history (of several such
    /// menus the last in the bar), and the command of the history's first item (0: anchorID + 1);
    /// the others follow it. Empties the list. The menu bar is the one that the window has when a
    /// file is recorded; without one, or without that item, only the list is kept.
    void init(HWND window, unsigned int anchorID, unsigned int firstID);

    /// Puts a file at the front of the list; it moves there when the list has it already, case
    /// counting. The oldest beyond five goes, and the menu shows the list. An empty name is
    /// ignored.
    void setLogFile(const RWCString& name);

    /// The name of the item with this command; empty when there is none.
    void getLogFile(unsigned int commandID, RWCString& out) const;

    /// Saves the list; 1 when every name is stored. Entries beyond the list's length
    /// stay as they were.
    int ecrire(const char* profileFile) const;

    /// Replaces the list by the one saved. Empty and missing entries are skipped, names of more
    /// than 1023 bytes are cut.
    void lire(const char* profileFile);

  private:
    std::list<RWCString> files_;  // the newest first
    HWND window_ = nullptr;
    unsigned int anchorID_ = 0;
    unsigned int firstID_ = 0;
};
