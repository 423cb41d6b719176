#include "standard/output_files.h"

#include <iostream>
#include <stdexcept>

#include "standard/platform.h"

namespace orbconv::standard {

namespace {

std::size_t partsOf(const Conversion& conversion) {
    return conversion.survey.contents.parts.size();
}

}  // namespace

void OutputFiles::refuseExistingOnes() const {
    const bool overwrite = conversion_.options.force;
    for (std::size_t part = 0; part < partsOf(conversion_); ++part) {
        for (const FileKind kind : {FileKind::observations, FileKind::navigation}) {
            if (hasFile(conversion_, part, kind)) {
                refuseExisting(pathOf(conversion_, part, kind), overwrite);
            }
        }
    }
}

OutputFile& OutputFiles::open(std::size_t part, FileKind kind) {
    return files_.emplace_back(kind, pathOf(conversion_, part, kind), conversion_.options.gzip).file;
}

void OutputFiles::write(ProgressBar& progress) {
    refuseExistingOnes();
    EpochSequence epochs(conversion_.survey, conversion_.options.selection);
    epochs.next();
    for (std::size_t part = 0; part < partsOf(conversion_); ++part) {
        if (hasFile(conversion_, part, FileKind::navigation)) {
            OutputFile& file = open(part, FileKind::navigation);
            writeNavigation(file.stream(), conversion_, part);
            file.close();
        }
        if (hasFile(conversion_, part, FileKind::observations)) {
            OutputFile& file = open(part, FileKind::observations);
            writeObservations(file.stream(), conversion_, part, epochs, progress);
            file.close();
        }
    }
    for (Written& written : files_) {
        written.file.finish();
    }
}

std::vector<std::filesystem::path> OutputFiles::paths(FileKind kind) const {
    std::vector<std::filesystem::path> paths;
    for (const Written& written : files_) {
        if (written.kind == kind) {
            paths.push_back(written.file.path());
        }
    }
    return paths;
}

void writeToStandardOutput(const Conversion& conversion, FileKind kind, ProgressBar& progress) {
    if (conversion.options.gzip) {
        makeStandardOutputBinary();
    }
    if (!hasFile(conversion, 0, kind)) {
        throw std::runtime_error(
            std::string("--stdout: there is no ") +
            (kind == FileKind::observations ? "epoch for an observation" : "record for a navigation") +
            " file");
    }
    OutputStream out(std::cout, "standard output", conversion.options.gzip);
    if (kind == FileKind::observations) {
        EpochSequence epochs(conversion.survey, conversion.options.selection);
        epochs.next();
        writeObservations(out, conversion, 0, epochs, progress);
    } else {
        writeNavigation(out, conversion, 0);
    }
    out.finish();
}

}  // namespace orbconv::standard
