#include "standard/output_file.h"

#include <cerrno>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace orbconv::standard {

namespace {

std::filesystem::path partOf(std::filesystem::path path) {
    path += ".part";
    return path;
}

// A folder for the output that is not there yet is made. If it cannot be, opening the file says why.
void makeFolderOf(const std::filesystem::path& path) {
    if (path.has_parent_path()) {
        std::error_code ignored;
        std::filesystem::create_directories(path.parent_path(), ignored);
    }
}

}  // namespace

void refuseExisting(const std::filesystem::path& path, bool overwrite) {
    // Told ahead of the first file, not when some stand under their names already.
    if (std::filesystem::is_directory(path)) {
        throw std::runtime_error(path.string() + " is a folder");
    }
    if (!overwrite && std::filesystem::exists(path)) {
        throw std::runtime_error(path.string() + " exists; --force overwrites it");
    }
}

OutputFile::OutputFile(std::filesystem::path path, bool gzip) : path_(std::move(path)) {
    makeFolderOf(path_);
    auto open = std::make_unique<Open>();
    errno = 0;
    open->file.open(partOf(path_), gzip ? std::ios::out | std::ios::binary : std::ios::out);
    if (!open->file.is_open()) {
        failToWrite(path_.string());
    }
    partPath_ = partOf(path_);
    open->text = std::make_unique<OutputStream>(open->file, path_.string(), gzip);
    open_ = std::move(open);
}

OutputFile::~OutputFile() {
    open_.reset();
    if (!partPath_.empty()) {
        std::error_code ignored;
        std::filesystem::remove(partPath_, ignored);
    }
}

void OutputFile::close() {
    stream().finish();
    open_->file.close();
    stream().check();
    open_.reset();
}

void OutputFile::finish() {
    if (open_) {
        close();
    }
    std::error_code error;
    std::filesystem::rename(partPath_, path_, error);
    if (error) {
        throw std::runtime_error(path_.string() + ": " + error.message());
    }
    partPath_.clear();
}

}  // namespace orbconv::standard
