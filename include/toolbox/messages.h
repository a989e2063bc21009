// The message service: texts from string resources, error reports, and small conversions.
//
// The application creates one GMSG at its start, calls initStaticVars, and tells it the module that
// holds its texts, its title and its current parent window; a report made earlier is safe and shows
// a box without caption. All else is static and belongs to the user-interface thread. The
// application destroys the object and calls destroyStaticVars at its end.
//
// Texts are looked up in the registered module first, in the application second, in the service's
// language where they exist in it; the library has its own texts 1300 to 1699 as a last resort.
// Templates are printf's; at most 511 characters of a template and of a printed text
// are kept. The arguments that follow a template are passed with their types: a template that asks
// for another type, for more of them or for "%n" prints something harmless. Only the VaList forms,
// whose arguments have no types, trust the template's.
#pragma once

#include <concepts>
#include <cstdarg>
#include <cstdint>
#include <iosfwd>
#include <span>
#include <string_view>
#include <type_traits>
#include <variant>

#include "toolbox/containers.h"
#include "toolbox/export.h"
#include "toolbox/settings.h"
#include "toolbox/strings.h"
#include "toolbox/win_types.h"

namespace toolbox {

/// One argument of a template. A character pointer is read only as far as the template asks.
using MessageArgument =
    std::variant<long long, unsigned long long, double, std::string_view, const char*>;

/// Numbers, unscoped enumerators, strings and pointers become arguments; a pointer that is not to
/// characters passes its address.
template <class T>
[[nodiscard]] MessageArgument messageArgument(const T& value) {
    using Plain = std::decay_t<T>;
    if constexpr (std::derived_from<Plain, ByteString>) {
        return value.view();
    } else if constexpr (std::floating_point<Plain>) {
        return static_cast<double>(value);
    } else if constexpr (std::convertible_to<const T&, const char*>) {
        return static_cast<const char*>(value);
    } else if constexpr (std::convertible_to<const T&, std::string_view>) {
        return std::string_view(value);
    } else if constexpr (std::same_as<Plain, unsigned char*> ||
                         std::same_as<Plain, const unsigned char*>) {
        return reinterpret_cast<const char*>(value);
    } else if constexpr (std::is_pointer_v<Plain>) {
        return static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(value));
    } else if constexpr (std::is_enum_v<Plain>) {
        return messageArgument(static_cast<std::underlying_type_t<Plain>>(value));
    } else if constexpr (std::signed_integral<Plain>) {
        return static_cast<long long>(value);
    } else {
        static_assert(std::integral<Plain>, "not a type that a template can print");
        return static_cast<unsigned long long>(value);
    }
}

/// The arguments of one call, in their order.
using MessageArguments = std::span<const MessageArgument>;

/// Numbers of texts, plain or named by an enumeration.
template <class T>
concept ResourceId = std::integral<T> || std::is_enum_v<T>;

}  // namespace toolbox

/// The message service of the process.
class TB_API GMSG {
  public:
    /// Language of texts. Any value but French counts as English.
    enum Language : int { English = 0, French = 1 };

    /// What happens to a reported error.
    enum ErrorReporting : int {
        ReportNothing = 0,  ///< it is dropped
        ReportInBox = 1,    ///< it is shown in a message box
        ReportInList = 2    ///< it is appended to the error list and to the log
    };

    /// Becomes the service: theMSG points to it, errors are shown in boxes, there is no log.
    GMSG();
    ~GMSG();
    GMSG(const GMSG&) = delete;
    GMSG& operator=(const GMSG&) = delete;

    /// The service; null before it is constructed and after it is destroyed.
    static GMSG* theMSG;
    /// French from the start. The application changes it at will.
    static Language language;

    // Creates the application title and the destination name, both empty.
    static void initStaticVars();
    static void destroyStaticVars();

    /// The module searched first for texts. Range checks are made only while there is one.
    static void setInstance(void* module);
    [[nodiscard]] static void* getInstance();

    /// The owner of message boxes. The next report forgets a window that does not exist.
    static void setParent(HWND parent);
    [[nodiscard]] static HWND getParent();
    /// 1 when a parent is set and is a live window.
    [[nodiscard]] static int isValidParent();

    /// Caption of error boxes.
    static void setAppTitle(const RWCString& title);
    [[nodiscard]] static RWCString getAppTitle();
    /// Where settings are stored: a registry key, or a profile file.
    static void setDestName(const RWCString& name);
    [[nodiscard]] static RWCString getDestName();

    /// Whether settings go to the registry (non-zero, the initial state) or to profile files.
    static void setUseRegistry(int use);
    [[nodiscard]] static int useRegistry();
    /// Root key of settings; HKEY_CURRENT_USER from the start.
    static void setKey(HKEY key);
    [[nodiscard]] static HKEY getKey();

    // Texts. Identifiers have 16 bits: of a larger number the low ones count.

    /// Copies text `id` into `buf`, cut at size - 1 characters and terminated. Returns the
    /// characters copied, 0 when the text is in neither module (`buf` is then empty).
    static int loadString(unsigned short id, char* buf, int size);

    // Prints text `id` with the arguments into `buf`, cut at size - 1 characters and terminated.
    // Returns the length of the template, 0 when there is none: getString then leaves `buf` empty,
    // getStringVaList leaves it as it was.
    template <class... Args>
    static int getString(unsigned short id, char* buf, int size, const Args&... args) {
        if (buf && size > 0) buf[0] = '\0';
        return withArguments(
            [&](toolbox::MessageArguments list) { return printInto(id, buf, size, list); },
            args...);
    }
    static int getStringVaList(unsigned short id, char* buf, int size, std::va_list args);

    // The same into a string, which a missing template makes empty.
    template <class... Args>
    static int getString(unsigned short id, RWCString& out, const Args&... args) {
        return withArguments(
            [&](toolbox::MessageArguments list) { return printInto(id, out, list); }, args...);
    }
    static int getStringVaList(unsigned short id, RWCString& out, std::va_list args);

    // Load and print into `out`, then bring it to `width` with copies of `pad`: before it, after
    // it, or half of them (rounded down) before and the rest after. A text at least that wide stays
    // as it is; a missing template is padded as the empty text that it leaves. At most 1 MiB of
    // padding is added. All return the length of the template.
    template <class... Args>
    static int getStringPadLeft(unsigned short id, RWCString& out, char pad, int width,
                                const Args&... args) {
        const int length = getString(id, out, args...);
        padLeft(out, pad, width);
        return length;
    }
    template <class... Args>
    static int getStringPadRight(unsigned short id, RWCString& out, char pad, int width,
                                 const Args&... args) {
        const int length = getString(id, out, args...);
        padRight(out, pad, width);
        return length;
    }
    template <class... Args>
    static int getStringPadMid(unsigned short id, RWCString& out, char pad, int width,
                               const Args&... args) {
        const int length = getString(id, out, args...);
        padMid(out, pad, width);
        return length;
    }
    /// `out` becomes `count` copies of its first character; nothing when it is empty or `count` is
    /// below 1. At most 1 MiB of them.
    template <class... Args>
    static int getStringReplicate(unsigned short id, RWCString& out, int count,
                                  const Args&... args) {
        const int length = getString(id, out, args...);
        replicate(out, count);
        return length;
    }

    /// The system's text for an error code: copies it into `buf` when there is one and returns its
    /// length. `buf` has room for 1024 characters; a longer text is cut.
    static int getLastErrorMsg(unsigned long code, char* buf);

    // Errors. By the error reporting option a report shows a box with the application's title and
    // returns the button chosen, or keeps the text, or drops it; the two latter return 0, and so
    // does a text `id` that is in neither module. `flags` are the box's icon and buttons; boxes are
    // always task-modal and come to the front.

    /// Reports a text of the resources.
    template <toolbox::ResourceId Id, class... Args>
    static int errorMsg(Id id, unsigned short flags, const Args&... args) {
        return withArguments(
            [&](toolbox::MessageArguments list) {
                return reportText(static_cast<unsigned short>(id), flags, list);
            },
            args...);
    }
    /// Reports a template given as text. A text that is not meant as a template is an argument:
    /// errorMsg("%s", flags, text).
    template <class... Args>
    static int errorMsg(const char* format, unsigned short flags, const Args&... args) {
        return withArguments(
            [&](toolbox::MessageArguments list) { return reportFormat(format, flags, list); },
            args...);
    }
    // The same with the arguments of a function that takes any number of them.
    static int errorMsgVaList(unsigned short id, unsigned short flags, std::va_list args);
    static int errorMsgVaList(const char* format, unsigned short flags, std::va_list args);

    /// Choosing the list empties it, even if it was already chosen; the other options leave it
    /// unchanged.
    static void setErrorReportingOption(ErrorReporting option);

    /// A copy of the errors collected so far, oldest first.
    [[nodiscard]] static RWTValSlist<RWCString> getLstErrors();
    /// Each of them followed by a line end.
    [[nodiscard]] static RWCString getLstErrorsInString();
    /// The newest; empty when there is none.
    [[nodiscard]] static RWCString getLastErrorMsg();

    /// Where errors that are kept in the list are written too, one a line; null for none. Borrowed.
    /// Without a service object this and the option above do nothing.
    static void setLogStream(std::ostream* log);

    /// Creates or empties the log file and makes it the log stream, until CloseLogFile or the
    /// service's end; the log file open before is closed. An empty path stands for a new file
    /// "ERR....TMP" in the system's folder for temporary files. Each error is in the file as soon
    /// as it is reported. 0, and no log, when the file cannot be opened or there is no service.
    static int OpenLogFile(const RWCString& path);
    /// Closes the log file, which is then no log stream any more; does nothing when none is open.
    static void CloseLogFile();

    // Settings. A setting has a section, an entry and a destination: `dest`, or getDestName() when
    // `dest` is null or empty. While useRegistry() is set it is the value `entry` of the key
    // dest\section under getKey(); otherwise the line `entry` of [section] in the profile file
    // `dest` (a name without a folder: see platform::ProfileStore). In the registry texts are
    // REG_SZ, both kinds of integers REG_DWORD, reals and bytes REG_BINARY; in a profile
    // everything is text.
    //
    // writeProfile returns 1 when the setting is stored, 0 when it is not or a name is empty.
    // getProfile returns 1 and the setting; otherwise 0 and the default, also when the registry
    // holds a value of another type or size.

    // A text up to its first NUL. A profile keeps it up to its first line break, drops blanks and
    // one pair of quotes around it, and gives back at most 1023 characters.
    static int writeProfile(const toolbox::SettingName& section, const toolbox::SettingName& entry,
                            const RWCString& value, const char* dest = nullptr);
    static int writeProfile(const toolbox::SettingName& section, const toolbox::SettingName& entry,
                            const char* value, const char* dest = nullptr);
    static int getProfile(const toolbox::SettingName& section, const toolbox::SettingName& entry,
                          RWCString& value, const RWCString& byDefault, const char* dest = nullptr);

    // In a profile a real is printed with `precision` decimals (6 when negative). Text that begins
    // with no number reads as 0.
    static int writeProfile(const toolbox::SettingName& section, const toolbox::SettingName& entry,
                            double value, int precision, const char* dest = nullptr);
    static int getProfile(const toolbox::SettingName& section, const toolbox::SettingName& entry,
                          double& value, double byDefault, const char* dest = nullptr);
    static int writeProfile(const toolbox::SettingName& section, const toolbox::SettingName& entry,
                            float value, int precision, const char* dest = nullptr);
    static int getProfile(const toolbox::SettingName& section, const toolbox::SettingName& entry,
                          float& value, float byDefault, const char* dest = nullptr);

    // In a profile a number beyond the range reads as its nearer end, text without one as 0.
    static int writeProfile(const toolbox::SettingName& section, const toolbox::SettingName& entry,
                            int value, const char* dest = nullptr);
    static int getProfile(const toolbox::SettingName& section, const toolbox::SettingName& entry,
                          int& value, int byDefault, const char* dest = nullptr);

    // Stored in 32 bits; a larger number is refused. A profile shows numbers from
    // 0x80000000 as negative ones, which read back as what was stored.
    static int writeProfile(const toolbox::SettingName& section, const toolbox::SettingName& entry,
                            unsigned long value, const char* dest = nullptr);
    static int getProfile(const toolbox::SettingName& section, const toolbox::SettingName& entry,
                          unsigned long& value, unsigned long byDefault,
                          const char* dest = nullptr);

    // Bytes, which live in the registry only: with a profile the result is 0 and nothing is
    // written. Only a value of exactly `length` bytes is found; `byDefault` has as many (null:
    // zeros).
    static int writeProfile(const toolbox::SettingName& section, const toolbox::SettingName& entry,
                            const unsigned char* value, unsigned long length,
                            const char* dest = nullptr);
    static int getProfile(const toolbox::SettingName& section, const toolbox::SettingName& entry,
                          unsigned char* value, unsigned long length,
                          const unsigned char* byDefault, const char* dest = nullptr);

    // Conversions into the caller's buffer, which is returned.

    /// `buf` has room for decimals + 16 characters (decimals above 1100 count as 1100). Zero is
    /// empty when `blankIfZero` is set. From 0.00001 to 99999 a number has `decimals` decimals,
    /// without a zero before the point (".25"); one that rounds to zero at 0 decimals has
    /// no digit at all. Other numbers have at most decimals + 6 significant digits, without zeros
    /// at the end, and always a point; an exponent of three digits where these do not suffice
    /// ("1.2345679e+009"). Zero is "0." whatever the decimals.
    static char* ftoa(double x, int decimals, char* buf, int blankIfZero);
    /// `buf` has room for 22 characters.
    static char* ntoa(long n, char* buf, int blankIfZero);
    // "O" or "N", "ON" or "OFF", "EC" or "HC", the same in every language; empty when `blank` is
    // set. `buf` has room for 4 characters.
    static char* btoa(int b, char* buf, int blank);
    static char* b2OnOff(int b, char* buf, int blank);
    static char* b2ECHC(int b, char* buf, int blank);
    /// Removes leading and trailing blanks in place.
    static char* strip(char* s);

    /// Checks a number against text `formatId`: a message template, the minimum and the maximum,
    /// with commas between them (several in a row count as one). Returns 1 when the number lies
    /// between the limits or is one, and when there is nothing to check (`formatId` is 0, no
    /// module is set, a limit is missing). Otherwise it shows the message, printed with the two
    /// limits, and returns 0. Returns 0 and shows nothing when the text cannot be loaded.
    static int checkDouble(double& x, unsigned short formatId);

#if defined(_WIN32)
    // Controls of the parent window, by their identifier. Where there is no such control nothing is
    // put, and what is read is empty or 0.
    //
    // Putting a text into a combo box selects its first item that begins with the text; then the
    // text becomes the control's.

    // Put the number in decimal.
    static void setInt(unsigned short id, int value);
    static void setLong(unsigned short id, long value);
    // As ftoa() prints it.
    static void setDouble(unsigned short id, double value, int decimals);
    static void setFloat(unsigned short id, float value, int decimals);
    // Prints the number by the template that follows the limits in range text `formatId` (see
    // checkDouble()); with one decimal by ftoa() when there is none.
    static void setFormatDouble(unsigned short id, double value, unsigned short formatId);
    static void setFormatFloat(unsigned short id, float value, unsigned short formatId);
    /// Lets the user type maxLength - 1 characters (no limit for 1 and less) and puts the text,
    /// which may be longer.
    static void setCtrlString(unsigned short id, const char* text, int maxLength);
    static void setCtrlString(unsigned short id, const RWCString& text, int maxLength);

    // Copies the control's text, cut at size - 1 characters and terminated, and returns its
    // length. Further arguments are accepted and ignored.
    template <class... Ignored>
    static int getCtrlString(unsigned short id, char* buf, int size, const Ignored&...) {
        return readControl(id, buf, size);
    }
    template <class... Ignored>
    static int getCtrlString(unsigned short id, RWCString& out, int size, const Ignored&...) {
        return readControl(id, out, size);
    }

    // Read the number at the start of the control's text (40 characters count; "12 mm" is 12, a
    // text without a number 0), store it, and check it as checkDouble() does, whose result they
    // return. `out` has the number even when it is refused. Limits are read as the number is: an
    // integer's are integers, for "%d" or "%ld" in the message. Numbers beyond the type's range
    // become its ends, reals infinities; the decimal point is '.'.
    static int getInt(unsigned short id, int& out, unsigned short formatId);
    static int getLong(unsigned short id, long& out, unsigned short formatId);
    static int getFloat(unsigned short id, float& out, unsigned short formatId);
    static int getDouble(unsigned short id, double& out, unsigned short formatId);
    /// Copies the control's text into `buf`, cut at size - 1 characters, and checks its number.
    /// Leaves `buf` alone and returns 1 when there is nothing to check: `formatId` is 0 or no
    /// module is set.
    static int getFloat(unsigned short id, char* buf, int size, unsigned short formatId);
#endif

  private:
#if defined(_WIN32)
    static int readControl(unsigned short id, char* buf, int size);
    static int readControl(unsigned short id, RWCString& out, int size);
#endif
    template <class Call, class... Args>
    static int withArguments(const Call& call, const Args&... args) {
        if constexpr (sizeof...(Args) == 0) {
            return call(toolbox::MessageArguments{});
        } else {
            const toolbox::MessageArgument list[] = {toolbox::messageArgument(args)...};
            return call(toolbox::MessageArguments(list));
        }
    }
    static int printInto(unsigned short id, char* buf, int size, toolbox::MessageArguments args);
    static int printInto(unsigned short id, RWCString& out, toolbox::MessageArguments args);
    static int reportText(unsigned short id, unsigned short flags, toolbox::MessageArguments args);
    static int reportFormat(const char* format, unsigned short flags,
                            toolbox::MessageArguments args);
    static void padLeft(RWCString& out, char pad, int width);
    static void padRight(RWCString& out, char pad, int width);
    static void padMid(RWCString& out, char pad, int width);
    static void replicate(RWCString& out, int count);

    static int report(const char* text, unsigned short flags);
    static bool drops();

    ErrorReporting option_ = ReportInBox;
    RWTValSlist<RWCString> errors_;
    std::ostream* log_ = nullptr;  // borrowed
};
