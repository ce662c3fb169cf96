#pragma once

#include "support/ExitCode.h"

#include <string>
#include <vector>

/// A command line that shows what a program is good for.
struct ProgramExample {
    std::string command;
    std::string purpose; ///< What it does, in a few words.
};

/// Keys or a movement of the mouse in a program's window, and what they do.
struct ProgramKey {
    std::string keys;    ///< "Ctrl+O", "Drag".
    std::string purpose; ///< In a few words.
};

/// What a program says of itself before its options. Help, manual page and completions are made of this and
/// of the options.
struct ProgramDescription {
    std::string name;
    std::string summary;                 ///< One line, without a full stop: "say what databases hold".
    std::string arguments;               ///< What follows the options: "FILE.flt...".
    std::vector<std::string> paragraphs; ///< What there is to know besides the options.
    std::vector<ProgramExample> examples;
    ExitCode highestExitCode = ExitCode::wrongUsage; ///< Those above never come from this program.
    std::vector<std::string> seeAlso;                ///< Names of programs with a manual page.
    std::vector<ProgramKey> keys = {};               ///< For the manual page, of a program with a window.
};

/// One option of a program, as people read it.
struct ProgramOption {
    std::vector<std::string> names; ///< "-q" and "--quiet".
    std::string value;              ///< What follows it: "FILE". Empty for a flag.
    bool isValueOptional = false;
    std::string description; ///< A sentence.
    std::vector<std::string> choices;
    std::string fileEnding; ///< For a value that is a file: its usual ending, ".flt". "/" for a directory.
};
