// The workbench: beam projects in windows.
//
//     workbench [--lang fr|en] [--settings FOLDER] [--trace] [FILE]
//
// Without --lang the language is the one chosen in the program, at first French. Settings, changed
// keys and the log lie in FOLDER, which is made when it is missing, with those above it; "Toolbox
// Workbench" among the user's application data when it is not given. --trace writes traces to
// workbench.log.trace.
#include <windows.h>

#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>

#include "frame/tracing.h"
#include "frame/workbench.h"
#include "frame/workbench_frame.h"
#include "resources/resource.h"
#include "resources/workbench_texts.h"

namespace {

struct Arguments {
    std::optional<GMSG::Language> language;
    std::string folder;
    bool trace = false;
    const char* file = nullptr;
};

std::optional<Arguments> parse(int count, char** words) {
    Arguments arguments;
    for (int i = 1; i < count; ++i) {
        const char* const value = i + 1 < count ? words[i + 1] : "";
        if (!std::strcmp(words[i], "--lang")) {
            ++i;
            if (!std::strcmp(value, "fr"))
                arguments.language = GMSG::French;
            else if (!std::strcmp(value, "en"))
                arguments.language = GMSG::English;
            else
                return std::nullopt;
        } else if (!std::strcmp(words[i], "--settings") && *value) {
            arguments.folder = words[++i];
        } else if (!std::strcmp(words[i], "--trace")) {
            arguments.trace = true;
        } else if (words[i][0] != '-' && !arguments.file) {
            arguments.file = words[i];
        } else {
            return std::nullopt;
        }
    }
    return arguments;
}

std::string usualFolder() {
    const char* const data = std::getenv("APPDATA");
    return std::string(data ? data : ".") + "\\Toolbox Workbench";
}

/// The library's services for the length of the program.
class Services {
  public:
    Services(const Arguments& arguments, HINSTANCE instance, const Settings& settings) {
        GMSG::initStaticVars();
        UDManager::initStaticVars();
        WindowDict::initStaticVars();
        GMSG::setInstance(instance);
        GMSG::setUseRegistry(0);
        GMSG::setDestName(settings.file);
        int language = GMSG::French;
        GMSG::getProfile("Program", "Language", language, GMSG::French);
        GMSG::language =
            arguments.language.value_or(language == GMSG::English ? GMSG::English : GMSG::French);
        GMSG::setAppTitle(text(kProgram));
        GMSG::OpenLogFile(settings.log);
        GMSG::setErrorReportingOption(GMSG::ReportInList);
    }
    ~Services() {
        GMSG::CloseLogFile();
        WindowDict::destroyStaticVars();
        UDManager::destroyStaticVars();
        GMSG::destroyStaticVars();
    }
    Services(const Services&) = delete;
    Services& operator=(const Services&) = delete;

  private:
    GMSG service_;
};

int run(HINSTANCE instance, const Arguments& arguments, const Settings& settings, int show) {
    const Services services(arguments, instance, settings);
    const CString title = text(kProgram);
    Workbench workbench(instance, settings);
    WorkbenchFrame frame(instance, nullptr,
                         {.title = title.c_str(),
                          .menuId = static_cast<std::uint32_t>(inLanguage(IDM_FRAME)),
                          .acceleratorId = IDA_FRAME,
                          .iconId = IDI_FRAME,
                          .windowMenuItemId = CMD_CASCADE,
                          .firstChildId = CMD_FIRST_CHILD},
                         &workbench);
    if (!frame.initMainWindow(show)) return 1;
    if (!settings.isWritable) workbench.report(kSettingsNotKept, MB_ICONEXCLAMATION, settings.file);
    workbench.offerRecovery();
    if (arguments.file) workbench.openFile(arguments.file);
    return frame.run(show);
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int show) {
    const std::optional<Arguments> arguments = parse(__argc, __argv);
    if (!arguments) {
        MessageBoxA(nullptr, "workbench [--lang fr|en] [--settings FOLDER] [--trace] [FILE]",
                    "workbench", MB_ICONINFORMATION);
        return 2;
    }
    const Settings settings =
        settingsIn(arguments->folder.empty() ? usualFolder() : arguments->folder);
    if (arguments->trace) startTracing(settings.log + ".trace");
    logFailedAssertions();
    return run(instance, *arguments, settings, show);
}
