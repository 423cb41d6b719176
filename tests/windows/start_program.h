// Starts programs on Windows without a command interpreter in between: arguments arrive as they are, whatever
// characters they hold.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace testsupport {

// The file of that name in the folder that holds the tests' own program, so that these programs can be
// carried to another computer together.
std::filesystem::path besideThisProgram(const std::filesystem::path& name);

// Runs a program in `folder`, its standard output and error in files, and returns its exit status. The
// arguments are in UTF-8. Throws std::runtime_error if it cannot be started.
int startProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                 const std::filesystem::path& folder, const std::filesystem::path& standardOutput,
                 const std::filesystem::path& standardError);

}  // namespace testsupport
