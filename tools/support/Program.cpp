#include "support/Program.h"

#include "support/DatabaseFiles.h"
#include "support/LikeNames.h"
#include "support/ProgramHelp.h"
#include "support/ToolError.h"

#include "loader/FltLoadError.h"
#include "messages/FltText.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <new>

struct Program::OptionalValue {
    std::string name;
    std::function<bool(std::string const&)> isValue;
};

/// What an option holds that takes directories.
struct Program::Directories {
    std::string option;
    std::vector<std::string> const* list;
};

namespace
{

/// What is said of an option that lacks its value.
std::string withoutValue(std::string const& name, ProgramOption const& option)
{
    return name + " takes a value: " + name + " " + option.value;
}

/// Without a value behind "=".
std::string nameIn(std::string const& word)
{
    return word.substr(0, word.find('='));
}

std::string inWords(std::vector<std::string> const& list, std::string const& lastSeparator)
{
    std::string text;
    for (std::size_t i = 0; i < list.size(); ++i)
        text += (i == 0 ? "" : i + 1 < list.size() ? ", " : lastSeparator) + list[i];
    return text;
}

/// "; did you mean --json?" Empty if nothing there is like what isn't.
std::string meant(LikeNames const& like)
{
    std::string const names = inWords(like.found(), " or ");
    return names.empty() ? "" : "; did you mean " + names + "?";
}

std::vector<std::string> namesOf(std::string const& names)
{
    std::vector<std::string> list;
    std::istringstream stream(names);
    for (std::string name; std::getline(stream, name, ',');)
        list.push_back(name);
    return list;
}

/// A description with the value that holds if the option isn't given.
std::string withDefault(std::string const& text, std::string const& value)
{
    return value.empty() ? text : text + " Default: " + value + ".";
}

void print(std::string const& text)
{
    std::fwrite(text.data(), 1, text.size(), stdout);
}

} // namespace

Program::Program(ProgramDescription whatItSays)
    : description(std::move(whatItSays)), app(std::make_unique<CLI::App>("", description.name))
{
    // A file that grows beyond the limit is reported then, as a full disk is.
    std::signal(SIGXFSZ, SIG_IGN);
    app->set_help_flag();
    add("-h,--help", {{}, "", false, "Explain the options and exit.", {}, ""});
    app->add_flag_callback("-h,--help", [] { throw CLI::CallForHelp(); });
    add("--version", {{}, "", false, "Print the version and exit.", {}, ""});
    app->add_flag_callback("--version", [] { throw CLI::CallForVersion("", 0); });
    flag("-q,--quiet", quiet, "Print errors only, no warnings.");
    flag("-v,--verbose", verbose, "Say more of what is being done, on standard error.");
}

Program::~Program() = default;

char const* Program::version()
{
    return VELLOREADER_VERSION;
}

void Program::add(std::string const& names, ProgramOption option)
{
    option.names = namesOf(names);
    options.push_back(std::move(option));
}

void Program::flag(std::string const& names, bool& isSet, std::string const& text)
{
    add(names, {{}, "", false, text, {}, ""});
    app->add_flag(names, isSet, text);
}

void Program::optionalValue(std::string const& name, std::string& value, std::string const& ifLeftOut,
                            std::string const& placeholder, std::function<bool(std::string const&)> isValue,
                            std::string const& text)
{
    add(name, {{}, placeholder, true, text, {}, ""});
    optionalValues.push_back({name, std::move(isValue)});
    app->add_flag(name + "{" + ifLeftOut + "}", value, text);
}

void Program::value(std::string const& names, std::string& value, std::string const& placeholder,
                    std::string const& text, std::string const& fileEnding)
{
    add(names, {{}, placeholder, false, withDefault(text, value), {}, fileEnding});
    app->add_option(names, value, text);
}

void Program::values(std::string const& names, std::vector<std::string>& list, std::string const& placeholder,
                     std::string const& text, std::string const& fileEnding)
{
    add(names, {{}, placeholder, false, text, {}, fileEnding});
    app->add_option(names, list, text)->allow_extra_args(false);
    if (fileEnding == "/")
        directories.push_back({names, &list});
}

void Program::choice(std::string const& names, std::string& value, std::vector<std::string> const& choices,
                     std::string const& placeholder, std::string const& text)
{
    add(names, {{}, placeholder, false, withDefault(text, value), choices, ""});
    auto const check = [choices](std::string const& given) -> std::string {
        LikeNames like(given);
        for (std::string const& choice : choices) {
            if (choice == given)
                return "";
            like.offer(choice);
        }
        return "give " + inWords(choices, " or ") + ", not " + given + meant(like);
    };
    app->add_option(names, value, text)->check(check);
}

void Program::colourOption()
{
    choice("--color", colourMode, {"auto", "always", "never"}, "WHEN",
           "Whether to colour text; auto does so on a terminal, unless NO_COLOR is set.");
}

void Program::noClobberOption(OutputFile::Existing& existing)
{
    std::string const text = "Replace no file: a result that is there already stays, and is an error.";
    add("--no-clobber", {{}, "", false, text, {}, ""});
    app->add_flag_callback("--no-clobber", [&existing] { existing = OutputFile::Existing::keep; });
}

void Program::inputs(std::vector<std::string>& list, bool areRequired)
{
    app->add_option("FILE", list)->required(areRequired);
    files = &list;
}

Colours Program::colours() const
{
    return Colours(colourMode == "always"  ? Colours::Mode::always
                   : colourMode == "never" ? Colours::Mode::never
                                           : Colours::Mode::automatic);
}

void Program::error(std::string const& text) const
{
    std::fprintf(stderr, "%s: %s\n", description.name.c_str(), FltText::printable(text).c_str());
}

ExitCode Program::reported(std::vector<std::string> const& problems) const
{
    for (std::string const& problem : problems)
        error(problem);
    return problems.empty() ? ExitCode::success : ExitCode::failed;
}

void Program::warn(std::string const& text) const
{
    if (!quiet)
        error("warning: " + text);
}

void Program::detail(std::string const& text) const
{
    if (verbose)
        error(text);
}

std::string Program::optionsGiven(std::vector<std::string> const& except) const
{
    std::string text;
    for (ProgramOption const& one : options) {
        std::string const& name = one.names.back();
        CLI::Option const* const option = app->get_option_no_throw(name);
        if (option == nullptr || option->count() == 0 ||
            std::find(except.begin(), except.end(), name) != except.end())
            continue;
        for (std::string const& value : option->results()) {
            text += (text.empty() ? "" : " ") + name;
            text += one.value.empty() ? "" : "=" + value;
        }
    }
    return text;
}

std::vector<std::string> Program::wordsOf(int argc, char** argv) const
{
    std::vector<std::string> words(argv + std::min(argc, 1), argv + argc);
    std::vector<std::string> result;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (words[i] == "--") {
            result.insert(result.end(), words.begin() + static_cast<std::ptrdiff_t>(i), words.end());
            break;
        }
        auto const option = std::find_if(optionalValues.begin(), optionalValues.end(),
                                         [&](OptionalValue const& one) { return one.name == words[i]; });
        bool const takesNext =
            option != optionalValues.end() && i + 1 < words.size() && option->isValue(words[i + 1]);
        if (takesNext)
            result.push_back(words[i] + "=" + words[i + 1]);
        else
            result.push_back(words[i]);
        i += takesNext ? 1 : 0;
    }
    return result;
}

bool Program::answersByItself(std::vector<std::string> const& words) const
{
    ProgramHelp const help(description, options);
    if (words.size() == 1 && words[0] == "--man")
        print(help.manPage(VELLOREADER_VERSION));
    else if (words.size() == 2 && words[0] == "--completion" && !help.completion(words[1]).empty())
        print(help.completion(words[1]));
    else
        return false;
    return true;
}

ExitCode Program::guarded(std::function<ExitCode()> const& work) const
{
    try {
        return work();
    } catch (UsageError const& problem) {
        reportUsage(problem.what());
        return ExitCode::wrongUsage;
    } catch (ToolError const& problem) {
        error(problem.what());
        return problem.exitCode;
    } catch (FltLoadError const& problem) {
        error(problem.what());
        return problem.kind() == FltLoadError::Kind::refused ? ExitCode::wrongUsage : ExitCode::failed;
    } catch (std::bad_alloc const&) {
        error("out of memory. A file is damaged, or too large for this machine.");
    } catch (std::exception const& problem) {
        error(problem.what());
    }
    return ExitCode::failed;
}

void Program::reportUsage(std::string const& problem) const
{
    bool const isQuestion = !problem.empty() && problem.back() == '?';
    error(problem + (isQuestion ? "" : ".") + " Try: " + description.name + " --help");
}

void Program::refuseValuesOfFlags(std::vector<std::string> const& words) const
{
    for (std::string const& word : words) {
        if (word == "--")
            return;
        std::string const name = nameIn(word);
        for (ProgramOption const& option : options)
            if (option.value.empty() && name != word &&
                std::find(option.names.begin(), option.names.end(), name) != option.names.end())
                throw UsageError(name + " takes no value");
    }
}

/// What is wrong with a command line, for people.
std::string Program::problemOf(CLI::ParseError const& error, std::vector<std::string> const& words) const
{
    if (std::vector<std::string> const unknown = app->remaining(); !unknown.empty())
        return unknownOption(unknown.front());
    if (dynamic_cast<CLI::ArgumentMismatch const*>(&error) == nullptr)
        return error.what();
    for (ProgramOption const& option : options)
        for (std::string const& name : option.names) {
            bool const hasValue = !option.value.empty() && !option.isValueOptional;
            if (hasValue && words.back() == name)
                return withoutValue(name, option);
            if (hasValue && app->get_option(name)->count() > 1)
                return name + " can be given once only";
        }
    return error.what();
}

std::string Program::unknownOption(std::string const& word) const
{
    LikeNames like(nameIn(word));
    if (word.compare(0, 2, "--") == 0)
        for (ProgramOption const& option : options)
            for (std::string const& name : option.names)
                like.offer(name);
    return "there is no option " + nameIn(word) + meant(like);
}

/// Makes sure that the files on the command line are what they can be.
void Program::checkFiles() const
{
    if (files != nullptr && std::find(files->begin(), files->end(), "-") != files->end())
        throw UsageError("a database isn't read from standard input (-), since other files lie beside it: "
                         "give the name of a file");
    for (Directories const& given : directories)
        for (std::string const& directory : *given.list)
            if (!DatabaseFiles::isDirectory(directory))
                warn(given.option + " " + directory + ": there is no such directory");
}

int Program::run(int argc, char** argv, std::function<ExitCode()> const& work)
{
    ExitCode code = ExitCode::success;
    std::vector<std::string> const words = wordsOf(argc, argv);
    try {
        if (!answersByItself(words)) {
            refuseValuesOfFlags(words);
            app->parse(std::vector<std::string>(words.rbegin(), words.rend()));
            checkFiles();
            code = guarded(work);
        }
    } catch (UsageError const& problem) {
        reportUsage(problem.what());
        return static_cast<int>(ExitCode::wrongUsage);
    } catch (CLI::CallForHelp const&) {
        print(ProgramHelp(description, options).text());
    } catch (CLI::CallForVersion const&) {
        print(description.name + " (VelloReader) " VELLOREADER_VERSION "\n");
    } catch (CLI::ParseError const& problem) {
        reportUsage(problemOf(problem, words));
        return static_cast<int>(ExitCode::wrongUsage);
    }
    if (int const reason = OutputFile::flush(stdout); reason != 0) {
        error(std::string("standard output: cannot write: ") + std::strerror(reason) +
              ". Check the space on the disk.");
        code = ExitCode::failed;
    }
    return static_cast<int>(code);
}
