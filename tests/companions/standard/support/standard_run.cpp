#include "companions/standard/support/standard_run.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <random>
#include <sstream>

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

int runWithArguments(const std::vector<std::string>& arguments, std::string& errors) {
    std::vector<const char*> pointers = {"orbconv-standard"};
    for (const std::string& argument : arguments) {
        pointers.push_back(argument.c_str());
    }
    const std::ostringstream caught;
    std::streambuf* const usual = std::cerr.rdbuf(caught.rdbuf());
    const int status = orbconv::standard::run(static_cast<int>(pointers.size()), pointers.data());
    std::cerr.rdbuf(usual);
    errors = caught.str();
    return status;
}

StandardRun runStandard(std::string_view log, std::vector<std::string> arguments,
                        const std::string& logName) {
    const OwnFolder folder;
    writeBytes(folder.path() / logName, log);
    arguments.push_back(folder.file(logName));
    StandardRun result;
    result.exitStatus = runWithArguments(arguments, result.errors);
    for (const std::string& name : folder.names()) {
        if (name != logName) {
            result.files[name] = textOfFile(folder.path() / name);
        }
    }
    return result;
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

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> all;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        all.push_back(line);
    }
    return all;
}

}  // namespace

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

std::vector<std::string> StandardRun::body() const {
    std::vector<std::string> all = lines();
    const auto end =
        std::ranges::find_if(all, [](const std::string& line) { return line.ends_with("END OF HEADER"); });
    return {end == all.end() ? end : end + 1, all.end()};
}

}  // namespace testsupport
