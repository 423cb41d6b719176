// An output file that is there whole or not at all.
#pragma once

#include <filesystem>
#include <fstream>
#include <memory>

#include "standard/output_stream.h"

namespace orbconv::standard {

// An existing file is a std::runtime_error unless `overwrite`; a folder of that name always is one.
void refuseExisting(const std::filesystem::path& path, bool overwrite);

// Written beside its final name, under the same name with ".part" behind it, and renamed by finish(). Without
// that, it is taken away again. Every failure is thrown as a std::runtime_error that names the file and says
// why.
class OutputFile {
public:
    // A file that is compressed has the line ends '\n' on every system, another has those of this system.
    explicit OutputFile(std::filesystem::path path, bool gzip = false);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Until close().
    OutputStream& stream() { return *open_->text; }

    // Writes all out, still under the name with ".part"; only the new name is left for finish().
    void close();
    void finish();

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

private:
    struct Open {
        std::ofstream file;
        std::unique_ptr<OutputStream> text;
    };

    std::filesystem::path path_;
    std::filesystem::path partPath_;  // empty when it is no longer there
    std::unique_ptr<Open> open_;      // null once closed
};

}  // namespace orbconv::standard
