// User-defined keys: the named, described and formatted quantities that an application lets its
// users show in tables, reports and labels.
//
// UDKeyData is the record of one key. UDManager is the registry of all keys of the process, with
// groups of keys; each manager object also has a selection and a matching set of its own.
// TokenizerUDManager also expands label templates such as "U=$VOLT$ V".
//
// An application derives its manager and provides getProfilePath() and getKeyValue(). Its life:
//     UDManager::initStaticVars();
//     manager.addKey(1, voltage); ...        declare every key
//     manager.initUDApp();                   take over what the user saved; no more keys from here
//     ...
//     manager.freeUDApp();
//     UDManager::destroyStaticVars();
//
// Ids are the application's own; 0xFFFFFFFF means "none" in results and is best not used. Int
// results are 1 for done or yes and 0 for refused, not known or no; what is refused changes nothing
// unless said otherwise. Where there are no static dictionaries every operation is refused.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "toolbox/containers.h"
#include "toolbox/export.h"
#include "toolbox/formats.h"
#include "toolbox/strings.h"
#include "toolbox/win_types.h"

/// One key's record: key string, description, format, column header and units. A plain value; it
/// owns its format.
class TB_API UDKeyData {
  public:
    /// Longest description, in characters.
    static constexpr std::size_t kMaxDescription = 64;

    /// Everything empty, with "no format".
    UDKeyData();
    explicit UDKeyData(const RWCString& key);
    UDKeyData(const UDKeyData& other);
    ~UDKeyData();
    UDKeyData& operator=(const UDKeyData& other);

    /// 1 when every field is equal, the formats in kind too.
    int operator==(const UDKeyData& other) const;
    int operator!=(const UDKeyData& other) const { return !(*this == other); }
    /// 1 when this is the record of that key string.
    int operator==(const RWCString& key) const;
    int operator!=(const RWCString& key) const { return !(*this == key); }

    /// The name that templates and profiles know the key by.
    [[nodiscard]] RWCString getKeyStr() const { return key_; }
    void setKeyStr(const RWCString& key) { key_ = key; }
    /// What the key is, for the user.
    [[nodiscard]] RWCString getDescStr() const { return description_; }
    /// Keeps the first kMaxDescription characters.
    void setDescStr(const RWCString& description);
    /// The column's title in tables.
    [[nodiscard]] RWCString getHeaderStr() const { return header_; }
    void setHeaderStr(const RWCString& header) { header_ = header; }
    /// The units as text; empty for none.
    [[nodiscard]] RWCString getUnitsStr() const { return units_; }
    /// "TVUNITS" marks units that the manager asks of the application each time.
    void setUnitsStr(const RWCString& units) { units_ = units; }

    /// The record's own format, never null; it lives until the format is set again.
    [[nodiscard]] FormatType* getFormat() const { return format_.get(); }
    /// Replaces the format by a new one of the argument's kind with its fields. A formatted value
    /// gives its plain format.
    void setFormat(const FormatType& format);

    /// The text that a profile keeps of the key: "|", the description right-aligned in 64 columns,
    /// "|", the format's saved form; then, only with a header, ",", header, ",", units.
    [[nodiscard]] RWCString saveStringData() const;
    /// Takes description and format from such a text; header and units stay as they
    /// are. The result is that of the format's restoreStringFormat(): on 0 the description is
    /// changed all the same, and part of the format may be. A description that holds '|' does not
    /// read back.
    int restoreStringData(RWCString text);

  private:
    RWCString key_;
    RWCString description_;
    std::unique_ptr<FormatType> format_;
    RWCString header_;
    RWCString units_;
};

namespace toolbox {

/// Walks the current keys, in the order of their declaration:
///     for (auto it = UDManager::getKeywordIterator(); it();) use(it.key(), it.value());
/// It may be held while records change. Once it has begun it stays with the keys it began with:
/// when the registry is emptied it is at its end, also when other keys are declared afterwards.
class TB_API KeywordIterator {
  public:
    /// Goes to the next key, at first to the first one; 0 when there is none.
    int operator()();
    // Id and record of the key it stands on; 0xFFFFFFFF and an empty record on none. The record
    // lives until the registry is emptied.
    [[nodiscard]] UINT key() const;
    [[nodiscard]] const UDKeyData& value() const;
    /// Goes back to before the first key.
    void reset() { next_ = 0; }

  private:
    std::size_t next_ = 0;       ///< index after the key it stands on
    std::uint64_t filling_ = 0;  ///< of the registry, when it began
};

/// Is told when keys, their records, groups or the selection of a manager have changed, whoever did
/// it; of values, which are the application's, it hears nothing. It lives as long as it is to be
/// told.
class TB_API KeyWatcher {
  public:
    KeyWatcher();
    virtual ~KeyWatcher();
    KeyWatcher(const KeyWatcher&) = delete;
    KeyWatcher& operator=(const KeyWatcher&) = delete;
    /// Something has changed. It may do anything: the operation that tells it touches nothing
    /// afterwards.
    virtual void keysChanged() = 0;
};

/// What a template would not have expanded, and where.
struct TemplateProblem {
    /// What is the matter.
    enum class Kind {
        unknown,      ///< a token that is no key's; "$$" is one with an empty word
        notMatching,  ///< a key outside the matching set
        unclosed,     ///< a "$" that has no partner; the word is the rest of the text
        keyInText     ///< text outside tokens that is a key: expansion mistakes it for a token
    };
    Kind kind;             ///< what is the matter
    std::size_t position;  ///< of the token's "$", or of the text; in bytes from 0
    RWCString word;        ///< without "$"
};

namespace udkey {
struct ManagerState;
class KeyEntry;
class ManagerLife;
}  // namespace udkey

}  // namespace toolbox

/// The registry of keys and one manager's selection and matching set. A copy has the same
/// selection and matching set.
class TB_API UDManager {
  public:
    UDManager();
    UDManager(const UDManager& other);
    virtual ~UDManager();
    UDManager& operator=(const UDManager& other);

    virtual int isUDManager();          ///< 1
    virtual int isTokenizeUDManager();  ///< 0; 1 in TokenizerUDManager

    // What every application's manager provides.

    /// Path of the profile file that keeps the users' changes. Empty: the manager is not ready, and
    /// nothing is restored or saved.
    virtual RWCString getProfilePath() = 0;
    /// Sets the current value of a key. `value` is a RealFormatedValue, NumberFormatedValue or
    /// StringFormatedValue by the kind of the key's format, which it carries already; a static_cast
    /// is enough. 1 when the value was set; otherwise the key prints as the empty text.
    virtual int getKeyValue(UINT id, FormatedValue* value) = 0;
    /// Units of a key that is marked "TVUNITS". Empty unless the application's manager says more.
    virtual RWCString getKeyUnits(UINT id);

    // The process's static dictionaries. Creating them twice or destroying what is not there does
    // nothing.
    static void initStaticVars();
    static void destroyStaticVars();
    /// The hash of an id: the id itself.
    static unsigned hashUINT(const UINT& id) { return id; }

    // Registry.

    /// Declares a key. Refused after initUDApp(), for "no format", and for an id or a key string
    /// that is declared already.
    ///
    /// The key string is the name of the key's line in the profile file, and the word that a
    /// template has between two "$". So it wants at least one character that is no blank, no blanks
    /// at its ends, no "=", no "$", no line break or NUL, no "[" in front, and to differ from other
    /// key strings not by case alone. Others are taken; but a key whose string no line can have as
    /// its name (getUnsavableKeys() tells) is never saved, and one with "$" in it never expanded.
    int addKey(UINT id, UDKeyData& data);
    /// Restores every declared key from the profile, which is read once, sets the matching set to
    /// all keys and returns the number of keys restored. A key without a valid line stays as
    /// declared. 0 and nothing done when called again, or while the profile's path is empty.
    UINT initUDApp();
    /// Removes all keys and groups, and this manager's selection and matching set. Keys can be
    /// declared anew then. 0 before initUDApp().
    int freeUDApp();
    /// 1 from initUDApp() to freeUDApp().
    [[nodiscard]] int isInitialized() const;
    /// Writes one key's line; 0 when the key is not known, no line can have its name, or the write
    /// failed, and the old file is then as it was. A line break ends the line: what a description
    /// has after one is not saved. Profile files ignore the case of names, so keys that differ only
    /// in case share one line.
    int saveKey(UINT id);
    /// Writes all keys at once, far faster than one by one. 1 when all are in the file. When there
    /// are keys that getUnsavableKeys() names, the others are saved and the result is 0. When the
    /// write fails, 0 and the old file, but on Windows the keys before the one that failed may be
    /// written.
    int saveAllKeys();
    /// The keys whose string no line of a profile can have as its name: an empty or blank one, one
    /// with "=", a line break or NUL in it, or with "[" as its first character. In the order of
    /// their declaration; also before initUDApp().
    [[nodiscard]] RWTValOrderedVector<UINT> getUnsavableKeys() const;
    /// Puts the record back to what the application declared; the profile keeps its line until the
    /// next saveKey(). 0 before initUDApp() or when the key is not known.
    int resetKey(UINT id);

    /// 1 when there is a key with that id.
    [[nodiscard]] int contains(UINT id) const;
    /// 0xFFFFFFFF for an unknown key, and, unlike the getters below, before initUDApp().
    [[nodiscard]] UINT getId(const RWCString& key) const;
    // An unknown key has empty texts and an empty record.
    [[nodiscard]] RWCString getKey(UINT id) const;
    [[nodiscard]] UDKeyData getKeyData(UINT id) const;
    [[nodiscard]] UDKeyData getKeyData(const RWCString& key) const;
    [[nodiscard]] RWCString getKeyDesc(UINT id) const;
    [[nodiscard]] RWCString getKeyDesc(const RWCString& key) const;
    [[nodiscard]] RWCString getHeaderStr(UINT id) const;
    [[nodiscard]] RWCString getHeaderStr(const RWCString& key) const;
    /// The record's units, or those of getKeyUnits() when they are exactly "TVUNITS".
    RWCString getUnitsStr(UINT id);
    /// Gives the key's format to `out`, which takes only its own kind. 0 when the key is not known;
    /// 1 otherwise, also when `out` did not take it.
    int getKeyFormat(UINT id, FormatType& out) const;

    // Changes of the current record, after initUDApp(). They do not write the profile: saveKey()
    // does.
    int setKeyDesc(UINT id, const RWCString& description);
    /// Takes only a format of the class of the key's own; a formatted value is refused.
    int setKeyFormat(UINT id, const FormatType& format);

    /// The key's current value as its format prints it, after initUDApp(); empty when the
    /// application has none. A nonzero `strip` removes the blanks at both ends.
    RWCString getFormatedString(UINT id, int strip);
    /// A value of the caller's under the key's format, which the value keeps afterwards. Empty, and
    /// the value unchanged, when it is not of the key's kind or the key is not known.
    RWCString getFormatedString(UINT id, FormatedValue& value, int strip);

    /// Not bound to one manager: the keys are the process's.
    static toolbox::KeywordIterator getKeywordIterator();

    // Selection: ids of keys in the order in which they were selected, each once, and a cursor.
    // From here on every operation needs initUDApp(); before it, it does nothing and answers 0,
    // 0xFFFFFFFF for an id, or an empty list. The lists of a manager belong to the keys: every
    // manager has an empty selection, and matches all keys, when it is new and when keys were
    // declared anew.

    /// Appends a key that is not selected yet and puts the cursor on it.
    int addSelectionId(UINT id);
    /// Replaces the selection by a list, an id that comes twice counting once; the cursor is on the
    /// id when there is only one, else nowhere. 0 for an empty list or one with an id that is no
    /// key: the selection stays and only the cursor is lost.
    int setSelection(const RWTValOrderedVector<UINT>& ids);
    /// Selects one key only. The former selection is lost even when the id is no key.
    int setSelection(UINT id);
    /// Nothing is selected afterwards.
    void resetSelection();
    // Both are 0 on an empty selection.
    int setFirstSelection();
    /// From nowhere to the first id, then on. At the last one 0, and the cursor stays.
    int setNextSelection();
    /// The id under the cursor, or 0xFFFFFFFF.
    [[nodiscard]] UINT getSelectionId() const;
    /// Puts the cursor on a selected id.
    int setSelectionId(UINT id);
    /// Lives until the selection changes.
    [[nodiscard]] const RWTValOrderedVector<UINT>& getSelection() const;
    /// Puts the token of the id under the cursor on the clipboard, "$VOLT$". 0 when there is none,
    /// with the clipboard untouched, or when the clipboard did not take it.
    int setSelTokenToClip();

    // Matching: the keys and groups that a search or a template takes into account.

    /// Takes over a list of keys and groups, an id that comes twice counting once. 0 for an empty
    /// one. With an id that is neither, all keys match afterwards, and the result is 0.
    int setMatching(const RWTValOrderedVector<UINT>& ids);
    // Add a key or a group to the set, and take it out. 0 when it is neither, when it is in the set
    // already, or when it is not in it.
    int addMatchingId(UINT id);
    int removeMatchingId(UINT id);
    /// All keys match, in the order of their declaration.
    void resetMatching();
    /// 1 when the id itself is in the set; the keys of a group that is in it are not.
    [[nodiscard]] int isMatching(UINT id) const;
    /// The set with its groups replaced by their keys, each key once, where it comes first.
    [[nodiscard]] RWTValOrderedVector<UINT> getMatching() const;
    /// Nothing matches afterwards.
    void freeMatchingKey();

    // Groups of keys and groups, shared by all managers. No group is below itself.

    /// Creates an empty group; refused for the id of a key or of a group.
    int createGroup(UINT gid);
    /// Appends a key or a group, creating group `gid` if needed. Refused when it would put a group
    /// below itself. A member may be appended twice.
    int addIdToGroup(UINT id, UINT gid);
    /// Removes the first occurrence.
    int deleteIdFromGroup(UINT id, UINT gid);
    /// Removes the group, and every occurrence of it in other groups.
    int deleteGroup(UINT gid);
    /// 1 when the id is a direct member.
    [[nodiscard]] int contains(UINT gid, UINT id) const;
    /// Everything below a group, each id once, where it comes first; a subgroup after what is below
    /// it. With `all` 0 only keys.
    [[nodiscard]] RWTValOrderedVector<UINT> getChildList(UINT gid, int all) const;
    /// Removes all groups.
    void resetGroup();

  private:
    friend class TokenizerUDManager;
    friend class toolbox::udkey::ManagerLife;
    /// The lists that belong to the current keys; null before initUDApp().
    toolbox::udkey::ManagerState* lists() const;
    /// Appends what getFormatedString() gives.
    void appendFormatted(const toolbox::udkey::KeyEntry& entry, int strip, std::string& out);

    std::shared_ptr<toolbox::udkey::ManagerState> state_;  ///< never null, shared for a call only
};

/// The manager that expands tokens: "$" + key string + "$" in a text stands for the current value
/// of that key, when the key itself is in the matching set. Case counts.
class TB_API TokenizerUDManager : public UDManager {
  public:
    int isTokenizeUDManager() override;  ///< 1

    /// The text with its tokens replaced; a nonzero `strip` removes the blanks around each value.
    ///
    /// The rule, in every detail: the text is split into words at each "$". For each word in turn
    /// that is a valid token, replaceValue() acts on the result so far; the first that fails ends
    /// the expansion. So text between tokens that is itself a key counts as a token; a
    /// value that holds "$" is searched as well; an unknown "$VOLTS$" is taken for a later
    /// "$VOLT$". checkTemplate() finds such templates. Time is proportional to the length of the
    /// result; in these cases to n log n, n being the length of the text and all values, and for
    /// each token that is replaced to the length of the longest key string besides.
    ///
    /// getKeyValue() may do anything but change `text`: what it makes a token, or no token any
    /// more, counts from the next word on, and when it deletes the manager the words after it stay.
    RWCString getParseString(const RWCString& text, int strip);

    /// 1 when the word is the key string of a key in the matching set.
    [[nodiscard]] int isValidToken(const RWCString& word) const;

    /// Replaces the first "$" + word, through the next "$" after it, by the key's value; 0 and no
    /// change when either is missing. The word of no key gives the empty text.
    int replaceValue(RWCString& text, const RWCString& word, int strip);

    /// What is wrong with a template, in the order of the text; empty when every token of it would
    /// be expanded. It fetches no values.
    [[nodiscard]] std::vector<toolbox::TemplateProblem> checkTemplate(const RWCString& text) const;
};
