// Declares the arguments of the commands to the library that reads them, in the user's language.
#include "commands/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <map>

#include "commands/commands.h"
#include "terminal/terminal.h"
#include "toolbox/version.h"

namespace tbfile {
namespace {

/// The language that the environment asks for: the first of these that is set and not empty.
Language environmentLanguage() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = std::getenv(name);
        if (value && *value)
            return std::string_view(value).starts_with("fr") ? Language::french : Language::english;
    }
    return Language::english;
}

/// The texts of the help are made before the arguments are read, so this one is looked for first.
Language askedLanguage(const std::vector<std::string>& arguments) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::string_view value;
        if (arguments[i] == "--lang" && i + 1 < arguments.size())
            value = arguments[i + 1];
        else if (arguments[i].starts_with("--lang="))
            value = std::string_view(arguments[i]).substr(std::string_view("--lang=").size());
        if (value == "fr") return Language::french;
        if (value == "en") return Language::english;
    }
    return environmentLanguage();
}

std::optional<std::uint32_t> idIn(std::string_view text) {
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (hexadecimal) text.remove_prefix(2);
    std::uint32_t id = 0;
    const char* end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, id, hexadecimal ? 16 : 10);
    return error == std::errc() && last == end ? std::optional(id) : std::nullopt;
}

/// The program's arguments as its commands declare them.
class Declared {
  public:
    Declared() : app_(say(Text::about), "tbfile") {
        auto labels = app_.get_formatter();
        labels->column_width(30);
        for (const auto& [key, text] : {std::pair{"Usage", Text::helpUsage},
                                        {"OPTIONS", Text::helpOptions},
                                        {"SUBCOMMAND", Text::helpCommand},
                                        {"SUBCOMMANDS", Text::helpCommands},
                                        {"Subcommands", Text::helpCommands},
                                        {"Positionals", Text::helpArguments},
                                        {"Options", Text::helpOptions},
                                        {"REQUIRED", Text::helpRequired}})
            labels->label(key, say(text));
        app_.option_defaults()->group(say(Text::helpOptionGroup));
        app_.set_help_flag("-h,--help", say(Text::helpHelp));
        app_.set_version_flag("--version", std::string("tbfile ") + toolbox::versionText(),
                              say(Text::helpVersion));
        app_.add_option("--lang", language_, say(Text::helpLang))
            ->check(CLI::IsMember({"fr", "en"}).description(""))
            ->type_name("fr|en");
        app_.require_subcommand(1);
        app_.fallthrough();
        app_.footer(say(Text::helpExamples));
        declare();
    }

    CLI::App& app() { return app_; }

    /// What was read; nothing when the identifier is none.
    [[nodiscard]] std::optional<Options> options() {
        for (const auto& [command, declared] : commands_)
            if (declared->parsed()) options_.command = command;
        options_.input = pathOf(input_);
        options_.output = pathOf(output_);
        if (!raw_.empty()) options_.raw = raw_;
        if (options_.command != Command::dump) return options_;
        const auto id = idIn(id_);
        if (!id) return std::nullopt;
        options_.id = *id;
        return options_;
    }
    [[nodiscard]] const std::string& idText() const { return id_; }

  private:
    CLI::App& add(Command command, const char* name, Text about, const char* input,
                  Text aboutInput = Text::helpInput) {
        CLI::App* sub = app_.add_subcommand(name, say(about));
        commands_[command] = sub;
        // The one that it inherits is in no group of ours.
        sub->set_help_flag("-h,--help", say(Text::helpHelp));
        sub->group(say(Text::helpCommands));
        sub->add_option(input, input_, say(aboutInput))->required()->type_name("");
        return *sub;
    }
    void addOutput(CLI::App& sub, const char* name, Text about) {
        sub.add_option(name, output_, say(about))->required()->type_name("");
    }
    void addForce(CLI::App& sub) {
        sub.add_flag("-f,--force", options_.force, say(Text::helpForce));
    }
    void addJson(CLI::App& sub) { sub.add_flag("--json", options_.json, say(Text::helpJson)); }

    void declare() {
        addJson(add(Command::info, "info", Text::aboutInfo, "FILE"));
        declareList();
        declareDump();
        CLI::App& extract =
            add(Command::extract, "extract", Text::aboutExtract, "FILE", Text::helpInputExtract);
        addOutput(extract, "FOLDER", Text::helpFolder);
        CLI::App& pack = add(Command::pack, "pack", Text::aboutPack, "FOLDER", Text::helpInputPack);
        addOutput(pack, "FILE", Text::helpOutput);
        CLI::App& verify =
            add(Command::verify, "verify", Text::aboutVerify, "FILE", Text::helpInputVerify);
        verify.add_flag("-q,--quick", options_.quick, say(Text::helpQuick));
        addJson(verify);
        CLI::App& recover =
            add(Command::recover, "recover", Text::aboutRecover, "IN", Text::helpInputRecover);
        addOutput(recover, "OUT", Text::helpOutput);
        recover.add_flag("--certain", options_.certain, say(Text::helpCertain));
        CLI::App& compare = add(Command::diff, "diff", Text::aboutDiff, "A", Text::helpInputDiff);
        addOutput(compare, "B", Text::helpOther);
        compare.add_flag("--ignore-dates", options_.ignoreDates, say(Text::helpIgnoreDates));
        addJson(compare);
        CLI::App& repack =
            add(Command::repack, "repack", Text::aboutRepack, "IN", Text::helpInputRepack);
        addOutput(repack, "OUT", Text::helpOutput);
        repack.add_flag("--checksums", options_.checksums, say(Text::helpChecksums));
        for (CLI::App* sub : {&extract, &pack, &recover, &repack}) {
            addForce(*sub);
            addJson(*sub);
        }
    }

    void declareList() {
        CLI::App& list = add(Command::ls, "ls", Text::aboutLs, "FILE", Text::helpInputList);
        static const std::map<std::string, Order> kOrders = {{"file", Order::file},
                                                             {"id", Order::id},
                                                             {"length", Order::length},
                                                             {"description", Order::description}};
        list.add_option("-s,--sort", options_.order, say(Text::helpSort))
            ->transform(CLI::CheckedTransformer(kOrders).description(""))
            ->type_name("file|id|length|description");
        list.add_flag("-r,--reverse", options_.reverse, say(Text::helpReverse));
        addJson(list);
    }

    void declareDump() {
        CLI::App& dump = add(Command::dump, "dump", Text::aboutDump, "FILE");
        dump.add_option("ID", id_, say(Text::helpId))->required()->type_name("");
        dump.add_option("--raw", raw_, say(Text::helpRaw))->type_name("FILE");
        addForce(dump);
    }

    CLI::App app_;
    std::map<Command, CLI::App*> commands_;
    Options options_;
    std::string language_;
    std::string input_;
    std::string output_;
    std::string id_;
    std::string raw_;
};

/// The option that an English message of the reader names, as the user writes it.
std::string optionIn(const CLI::App& app, const std::string& message) {
    std::size_t first = message.size();
    std::string named;
    const auto look = [&](const CLI::App& declared) {
        for (const CLI::Option* option : declared.get_options()) {
            const std::size_t at = message.find(option->get_name());
            if (option->get_name().empty() || at >= first) continue;
            first = at;
            named = option->get_name();
        }
    };
    for (const CLI::App* command : app.get_subcommands()) look(*command);
    look(app);
    return named.empty() ? "?" : named;
}

/// What is wrong with the arguments, in the program's language.
std::string wrongIn(const CLI::App& app, const CLI::ParseError& error) {
    const auto given = app.get_subcommands();
    std::string extra;
    for (const std::string& word : app.remaining(true)) extra += (extra.empty() ? "" : " ") + word;
    if (dynamic_cast<const CLI::ExtrasError*>(&error))
        return say(Text::unexpectedArgument, {extra});
    if (given.empty() && dynamic_cast<const CLI::RequiredError*>(&error))
        return extra.empty() ? say(Text::missingCommand) : say(Text::unknownCommand, {extra});
    if (dynamic_cast<const CLI::RequiredError*>(&error)) {
        for (const CLI::Option* option : given.front()->get_options())
            if (option->get_required() && option->count() == 0)
                return say(Text::missingArgument, {option->get_name()});
    }
    return say(Text::badValue, {optionIn(app, error.what())});
}

}  // namespace

std::optional<Options> readOptions(std::vector<std::string> arguments, int& status) {
    speak(askedLanguage(arguments));
    Declared declared;
    status = kCannotRun;
    try {
        std::ranges::reverse(arguments);
        declared.app().parse(arguments);
        if (auto options = declared.options()) return options;
        printError("tbfile: " + say(Text::badId, {declared.idText()}) + "\n");
    } catch (const CLI::CallForHelp&) {
        status = kSound;
        print(declared.app().help());
    } catch (const CLI::CallForVersion& version) {
        status = kSound;
        print(std::string(version.what()) + "\n");
    } catch (const CLI::ParseError& error) {
        printError("tbfile: " + say(Text::badArguments, {wrongIn(declared.app(), error)}) + "\n");
    }
    return std::nullopt;
}

}  // namespace tbfile
