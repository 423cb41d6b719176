// An output file that is there whole or not at all.
#pragma once

#include <filesystem>
#include <fstream>

#include "text/text_writer.h"

namespace orbconv::standard {

// Written beside its final name, under the same name with ".part" behind it, and renamed by finish(). Without
// that, it is taken away again. Every failure is thrown as a std::runtime_error that names the file and says
// why.
class OutputFile {
public:
    // An existing file is a failure unless `overwrite`.
    OutputFile(std::filesystem::path path, bool overwrite);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    TextWriter& writer() { return writer_; }

    // Fails if something could not be written so far; cheap enough to ask after each epoch.
    void check() const;
    // Writes all out, still under the name with ".part"; only the new name is left for finish().
    void close();
    void finish();

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

private:
    [[noreturn]] void fail() const;

    std::filesystem::path path_;
    std::filesystem::path partPath_;
    std::ofstream stream_;
    TextWriter writer_;
    bool finished_ = false;
};

}  // namespace orbconv::standard
