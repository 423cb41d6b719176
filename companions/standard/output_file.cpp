#include "standard/output_file.h"

#include <cerrno>
#include <stdexcept>
#include <system_error>

namespace orbconv::standard {

namespace {

std::filesystem::path partOf(std::filesystem::path path) {
    path += ".part";
    return path;
}

void refuseExisting(const std::filesystem::path& path, bool overwrite) {
    if (!overwrite && std::filesystem::exists(path)) {
        throw std::runtime_error(path.string() + " exists; --force overwrites it");
    }
}

// A folder for the output that is not there yet is made. If it cannot be, opening the file says why.
void makeFolderOf(const std::filesystem::path& path) {
    if (path.has_parent_path()) {
        std::error_code ignored;
        std::filesystem::create_directories(path.parent_path(), ignored);
    }
}

}  // namespace

OutputFile::OutputFile(std::filesystem::path path, bool overwrite)
    : path_(std::move(path)), partPath_(partOf(path_)), writer_(stream_) {
    refuseExisting(path_, overwrite);
    makeFolderOf(path_);
    errno = 0;
    stream_.open(partPath_);
    if (!stream_.is_open()) {
        finished_ = true;  // nothing to take away
        fail();
    }
}

OutputFile::~OutputFile() {
    if (!finished_) {
        stream_.close();
        std::error_code ignored;
        std::filesystem::remove(partPath_, ignored);
    }
}

void OutputFile::fail() const {
    const std::string reason = errno != 0 ? std::generic_category().message(errno) : "it cannot be written";
    throw std::runtime_error(path_.string() + ": " + reason);
}

void OutputFile::check() const {
    if (stream_.fail()) {
        fail();
    }
}

void OutputFile::close() {
    writer_.flush();
    stream_.close();
    check();
}

void OutputFile::finish() {
    if (stream_.is_open()) {
        close();
    }
    std::error_code error;
    std::filesystem::rename(partPath_, path_, error);
    if (error) {
        throw std::runtime_error(path_.string() + ": " + error.message());
    }
    finished_ = true;
}

}  // namespace orbconv::standard
