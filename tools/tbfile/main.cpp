// tbfile: inspects, verifies and recovers block files.
#include <new>

#include "commands/commands.h"
#include "terminal/failure.h"
#include "terminal/terminal.h"

namespace {

int run(const tbfile::Options& options) {
    using tbfile::Command;
    switch (options.command) {
        case Command::info:
            return tbfile::info(options);
        case Command::ls:
            return tbfile::list(options);
        case Command::dump:
            return tbfile::dump(options);
        case Command::extract:
            return tbfile::extract(options);
        case Command::pack:
            return tbfile::pack(options);
        case Command::verify:
            return tbfile::verify(options);
        case Command::recover:
            return tbfile::recover(options);
        case Command::diff:
            return tbfile::compare(options);
        case Command::repack:
            return tbfile::repack(options);
    }
    return tbfile::kCannotRun;
}

int complain(const std::string& text) {
    tbfile::printError("tbfile: " + text + "\n");
    return tbfile::kCannotRun;
}

}  // namespace

int main(int count, char** given) {
    const tbfile::Terminal terminal;
    int status = tbfile::kCannotRun;
    try {
        const auto options = tbfile::readOptions(tbfile::arguments(count, given), status);
        if (options) status = run(*options);
        if (!tbfile::finishOutput()) return complain(tbfile::say(tbfile::Text::outputFailed));
        return status;
    } catch (const tbfile::Failure& failure) {
        return complain(failure.what());
    } catch (const std::bad_alloc&) {
        return complain(tbfile::say(tbfile::Text::noMemory));
    } catch (const std::exception& error) {
        return complain(tbfile::say(tbfile::Text::unexpected, {error.what()}));
    }
}
