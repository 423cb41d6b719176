#include "companions/standard/support/standard_run.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <random>
#include <sstream>
#include <utility>

#include "standard/run.h"

namespace testsupport {

namespace fs = std::filesystem;

OwnFolder::OwnFolder() {
    std::random_device random;
    path_ = fs::temp_directory_path() /
            ("orbconv-standard-" + std::to_string(random()) + std::to_string(random()));
    fs::create_directories(path_);
}

OwnFolder::~OwnFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::vector<std::string> OwnFolder::names() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(path_)) {
        names.push_back(entry.path().filename().string());
    }
    std::ranges::sort(names);
    return names;
}

std::string textOfFile(const fs::path& path) {
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    std::string text = bytes.str();
#ifdef _WIN32
    std::erase(text, '\r');
#endif
    return text;
}

void writeBytes(const fs::path& path, std::string_view bytes) {
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

namespace {

// Takes what goes to a stream as long as it lives.
class Caught {
public:
    explicit Caught(std::ostream& stream) : stream_(stream), usual_(stream.rdbuf(text_.rdbuf())) {}
    ~Caught() { stream_.rdbuf(usual_); }
    Caught(const Caught&) = delete;
    Caught& operator=(const Caught&) = delete;
    [[nodiscard]] std::string text() const { return text_.str(); }

private:
    std::ostream& stream_;
    std::ostringstream text_;
    std::streambuf* usual_;
};

StandardRun runWith(const std::vector<std::string>& arguments) {
    std::vector<const char*> pointers = {"orbconv-standard"};
    for (const std::string& argument : arguments) {
        pointers.push_back(argument.c_str());
    }
    const Caught errors(std::cerr);
    const Caught output(std::cout);
    StandardRun result;
    result.exitStatus = orbconv::standard::run(static_cast<int>(pointers.size()), pointers.data());
    result.errors = errors.text();
    result.output = output.text();
    return result;
}

}  // namespace

int runWithArguments(const std::vector<std::string>& arguments, std::string& errors) {
    const StandardRun result = runWith(arguments);
    errors = result.errors;
    return result.exitStatus;
}

StandardRun runStandardOn(const std::vector<NamedLog>& logs, std::vector<std::string> arguments) {
    const OwnFolder folder;
    for (const NamedLog& log : logs) {
        writeBytes(folder.path() / log.name, log.bytes);
        arguments.push_back(folder.file(log.name));
    }
    StandardRun result = runWith(arguments);
    for (const std::string& name : folder.names()) {
        if (std::ranges::find(logs, name, &NamedLog::name) == logs.end()) {
            result.files[name] = textOfFile(folder.path() / name);
        }
    }
    return result;
}

StandardRun runStandard(std::string_view log, std::vector<std::string> arguments,
                        const std::string& logName) {
    return runStandardOn({{logName, std::string(log)}}, std::move(arguments));
}

namespace {

// The texts of the files of a kind: observation files end in "O.rnx".
std::vector<std::string> textsOf(const std::map<std::string, std::string>& files, std::string_view ending) {
    std::vector<std::string> texts;
    for (const auto& [name, text] : files) {
        if (name.ends_with(ending)) {
            texts.push_back(text);
        }
    }
    return texts;
}

}  // namespace

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> all;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        all.push_back(line);
    }
    return all;
}

std::string StandardRun::text() const {
    const auto texts = textsOf(files, "O.rnx");
    EXPECT_EQ(texts.size(), 1U) << errors;
    return texts.size() == 1 ? texts.front() : "";
}

std::string StandardRun::navigationText() const {
    const auto texts = textsOf(files, "N.rnx");
    EXPECT_LE(texts.size(), 1U) << errors;
    return texts.empty() ? "" : texts.front();
}

std::vector<std::string> StandardRun::lines() const {
    return linesOf(text());
}

std::vector<std::string> StandardRun::navigationLines() const {
    return linesOf(navigationText());
}

std::vector<std::string> StandardRun::labelled(std::string_view label) const {
    constexpr std::size_t labelColumn = 60;
    std::vector<std::string> found;
    for (const std::string& line : lines()) {
        if (line.size() > labelColumn && std::string_view(line).substr(labelColumn) == label) {
            const std::string content = line.substr(0, labelColumn);
            found.push_back(content.substr(0, content.find_last_not_of(' ') + 1));
        }
    }
    return found;
}

std::vector<std::string> bodyOf(const std::string& text) {
    std::vector<std::string> all = linesOf(text);
    const auto end =
        std::ranges::find_if(all, [](const std::string& line) { return line.ends_with("END OF HEADER"); });
    return {end == all.end() ? end : end + 1, all.end()};
}

std::vector<std::string> StandardRun::body() const {
    return bodyOf(text());
}

}  // namespace testsupport
