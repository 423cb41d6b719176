// Runs the built converter on a log, as a user would, and gives back what it left.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace testsupport {

struct Conversion {
    int exitStatus = 0;     // 0 or 1 for an end that the program chose
    bool abnormal = false;  // ended by an exception that nobody caught
    std::string standardOutput;
    std::string standardError;
    // Output files by the letter that ends their name, with line ends as '\n'.
    std::map<char, std::string> files;
    // All file names in the folder, the log's too, in order.
    std::vector<std::string> names;

    [[nodiscard]] bool has(char letter) const { return files.contains(letter); }
    // The lines of a file without their line ends; none for a file that is not there.
    [[nodiscard]] std::vector<std::string> lines(char letter) const;
    // The lines that carry a header label (in a file's header, the text that ends the line).
    [[nodiscard]] std::vector<std::string> labelled(char letter, std::string_view label) const;
    // The lines behind "END OF HEADER".
    [[nodiscard]] std::vector<std::string> body(char letter) const;
};

// Converts `log` in a fresh folder, under the name `logName`, with the arguments "-f NAME" and then
// `arguments`.
Conversion convert(std::string_view log, const std::vector<std::string>& arguments = {},
                   const std::string& logName = "site0010.log");

// Runs the program in a fresh folder that holds `log` under `logName` (no file if the name is empty), with
// `arguments` alone.
Conversion runProgram(const std::vector<std::string>& arguments, std::string_view log = {},
                      const std::string& logName = {});

// Runs the program in a folder that is there already, its standard streams in files, and gives back the exit
// status; -1 for an end by a signal.
int exitStatusOfRun(const std::vector<std::string>& arguments, const std::filesystem::path& folder,
                    const std::filesystem::path& standardOutput, const std::filesystem::path& standardError);

// Splits at '\n'; a text that ends with one has no empty last line.
std::vector<std::string> splitLines(std::string_view text);

}  // namespace testsupport
