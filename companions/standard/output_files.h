// The files that a call writes, all of them or none.
#pragma once

#include <deque>
#include <filesystem>
#include <utility>
#include <vector>

#include "standard/conversion.h"
#include "standard/output_file.h"

namespace orbconv::standard {

// Each file stands under its name with ".part" until all are complete.
class OutputFiles {
public:
    // The conversion has to outlive the files.
    explicit OutputFiles(const Conversion& conversion) : conversion_(conversion) {}

    // The files of each part. An existing file is a std::runtime_error ahead of the first byte, unless
    // it is to be overwritten; so is a folder of a file's name.
    void write(ProgressBar& progress);

    // The paths of those that are written, in the order of their parts.
    [[nodiscard]] std::vector<std::filesystem::path> paths(FileKind kind) const;

private:
    struct Written {
        FileKind kind;
        OutputFile file;

        Written(FileKind kindOfFile, std::filesystem::path path, bool gzip)
            : kind(kindOfFile), file(std::move(path), gzip) {}
    };

    void refuseExistingOnes() const;
    OutputFile& open(std::size_t part, FileKind kind);

    const Conversion& conversion_;
    std::deque<Written> files_;
};

// The first part's file of that kind. A std::runtime_error if there is nothing for it.
void writeToStandardOutput(const Conversion& conversion, FileKind kind, ProgressBar& progress);

}  // namespace orbconv::standard
