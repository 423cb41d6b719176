// Runs orbconv-standard on a log, within the test's own process, and gives back what it left.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace testsupport {

// A folder of its own, gone with it.
class OwnFolder {
public:
    OwnFolder();
    ~OwnFolder();
    OwnFolder(const OwnFolder&) = delete;
    OwnFolder& operator=(const OwnFolder&) = delete;
    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    [[nodiscard]] std::string file(const std::string& name) const { return (path_ / name).string(); }
    // The names of all files, in order.
    [[nodiscard]] std::vector<std::string> names() const;

private:
    std::filesystem::path path_;
};

// A text file with line ends as '\n'.
std::string textOfFile(const std::filesystem::path& path);
void writeBytes(const std::filesystem::path& path, std::string_view bytes);

struct StandardRun {
    int exitStatus = 0;
    std::string errors;                        // the error stream
    std::string output;                        // standard output
    std::map<std::string, std::string> files;  // by name, without the logs

    // The text of the one observation file; empty, and a failure of the test, if there is not just one.
    [[nodiscard]] std::string text() const;
    // The text of the navigation file; empty if there is none.
    [[nodiscard]] std::string navigationText() const;
    [[nodiscard]] std::vector<std::string> navigationLines() const;
    [[nodiscard]] std::vector<std::string> lines() const;
    // The first 60 columns, without the blanks at their end, of the header lines with a label.
    [[nodiscard]] std::vector<std::string> labelled(std::string_view label) const;
    // The lines behind the header.
    [[nodiscard]] std::vector<std::string> body() const;
};

// With the arguments, and the log's path behind them.
StandardRun runStandard(std::string_view log, std::vector<std::string> arguments = {},
                        const std::string& logName = "site.kvs");

// A log as a file.
struct NamedLog {
    std::string name;
    std::string bytes;
};
// With the arguments, and the logs' paths behind them in this order.
StandardRun runStandardOn(const std::vector<NamedLog>& logs, std::vector<std::string> arguments = {});

// The lines behind a file's header.
std::vector<std::string> bodyOf(const std::string& text);
std::vector<std::string> linesOf(const std::string& text);

// The exit status of the program's run with just these arguments; `errors` takes the error stream.
int runWithArguments(const std::vector<std::string>& arguments, std::string& errors);

}  // namespace testsupport
