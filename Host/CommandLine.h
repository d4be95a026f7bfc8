#pragma once

#include <string>

#include <CLI/App.hpp>
#include <CLI/Validators.hpp>

// What the command line needs beside its options.
namespace CommandLine {

// Takes whole numbers from there on.
CLI::Validator NumberFrom(int least);

// What to say of a command line that was refused because it has no command: the first word that is none, and what there
// is instead. Empty when it has a command, or no words at all.
std::string DescribeUnknownWord(const CLI::App& app);

} // namespace CommandLine
