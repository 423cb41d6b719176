#include "inspect/inspect_run.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <vector>

#include "inspect/command_line.h"
#include "inspect/json_document.h"
#include "inspect/page.h"
#include "inspect/progress.h"
#include "inspect/summarise.h"
#include "inspect/text_screen.h"
#include "reading/version.h"

namespace orbconv::inspect {

namespace {

namespace fs = std::filesystem;

std::optional<std::uint64_t> sizeOf(const std::string& file) {
    std::error_code error;
    const auto size = fs::file_size(file, error);
    return error ? std::nullopt : std::optional<std::uint64_t>(size);
}

LogResult failure(std::string sentence) {
    return {.summary = std::nullopt, .error = std::move(sentence)};
}

std::string bytesText(std::uint64_t bytes) {
    return std::to_string(bytes) + " bytes";
}

bool writeHtml(const std::string& file, const std::vector<LogSummary>& logs, std::ostream& errors) {
    std::ofstream page(file, std::ios::binary);
    if (page) {
        writePage(page, logs);
        page.close();
    }
    if (!page) {
        errors << "orbconv-inspect: " << file << ": the page can't be written: " << std::strerror(errno)
               << '\n';
    }
    return !page.fail();
}

// Why the page must not be written to this file; empty: it can be. A slip such as "--html a.kvs b.kvs" must
// not cost a log: nothing is overwritten but a page.
std::string whyNoPage(const InspectOptions& options) {
    const std::string& file = options.htmlFile;
    std::error_code ignored;
    for (const std::string& log : options.logs) {
        if (fs::equivalent(file, log, ignored)) {
            return "is one of the logs; the page needs a file of its own";
        }
    }
    if (!fs::is_regular_file(file, ignored) || fs::file_size(file, ignored) == 0) {
        return {};
    }
    const std::string_view pages = pageOpening;
    std::string opening(pages.size(), '\0');
    std::ifstream(file, std::ios::binary).read(opening.data(), static_cast<std::streamsize>(opening.size()));
    return opening == pages ? "" : "is there already and is no page; it is left as it is";
}

// All logs of the command line, and their status so far.
int readLogs(const InspectOptions& options, std::vector<LogSummary>& logs, std::ostream& errors,
             bool terminal) {
    int status = nothingWrong;
    const LogWishes wishes{.timeline = !options.htmlFile.empty(), .progress = terminal ? &errors : nullptr};
    for (const std::string& file : options.logs) {
        LogResult result = inspectLog(file, wishes);
        if (!result.summary) {
            errors << "orbconv-inspect: " << file << ": " << result.error << '\n';
            status = notReadable;
            continue;
        }
        for (const std::string& note : result.summary->notes) {
            errors << "orbconv-inspect: " << file << ": " << note << '\n';
        }
        if (result.summary->damageCount > 0 && status == nothingWrong) {
            status = damageFound;
        }
        logs.push_back(std::move(*result.summary));
    }
    return status;
}

void writeScreens(std::ostream& out, const std::vector<LogSummary>& logs) {
    for (std::size_t i = 0; i < logs.size(); ++i) {
        out << (i > 0 ? "\n\n" : "");
        writeScreen(out, logs[i]);
    }
}

int run(const InspectOptions& options, std::ostream& out, std::ostream& errors, bool terminal) {
    std::vector<LogSummary> logs;
    int status = readLogs(options, logs, errors, terminal);
    if (options.json) {
        writeJson(out, logs);
    } else if (!options.quiet) {
        writeScreens(out, logs);
    }
    if (!options.htmlFile.empty() && !writeHtml(options.htmlFile, logs, errors)) {
        status = notReadable;
    }
    out.flush();
    if (!out) {
        errors << "orbconv-inspect: standard output can't be written\n";
        status = notReadable;
    }
    return status;
}

}  // namespace

LogResult judged(LogSummary summary, FileSizes sizes, bool failed) {
    if (failed) {
        return failure("reading failed behind " + bytesText(summary.bytes));
    }
    if (summary.bytes == 0) {
        return failure("the file is empty");
    }
    if (sizes.before && summary.bytes < *sizes.before) {
        return failure("the file was cut to " + bytesText(summary.bytes) + " while it was read");
    }
    if (sizes.before && !sizes.after) {
        summary.notes.emplace_back("the file was removed while it was read; all of it was read");
    }
    if (sizes.before && sizes.after && *sizes.after > *sizes.before) {
        summary.notes.push_back("the file grew while it was read: its first " + bytesText(summary.bytes) +
                                " are told, and its last message may be cut");
    }
    return {.summary = std::move(summary), .error = {}};
}

LogResult inspectLog(const std::string& file, const LogWishes& wishes) {
    std::error_code ignored;
    if (fs::is_directory(file, ignored)) {
        return failure("is a directory");
    }
    std::FILE* const opened = std::fopen(file.c_str(), "rb");
    if (opened == nullptr) {
        return failure(std::strerror(errno));
    }
    const auto size = sizeOf(file);
    reading::LogReader reader(opened);
    // What can't be read twice, such as a pipe, has no bytes to go back to.
    const bool regular = fs::is_regular_file(file, ignored);
    SummaryWishes summaryWishes{
        .timeline = wishes.timeline, .progress = {}, .end = size && *size > 0 ? *size : UINT64_MAX};
    std::optional<ProgressBar> bar;
    if (wishes.progress != nullptr && size) {
        bar.emplace(*wishes.progress, file, *size, ProgressBar::Clock::now());
        summaryWishes.progress = [&](std::uint64_t taken) { bar->show(taken, ProgressBar::Clock::now()); };
    }
    LogSummary summary = summarise(reader, LogBytes(regular ? file : std::string{}), summaryWishes);
    if (bar) {
        bar->clear();
    }
    summary.file = file;
    if (!regular) {
        summary.notes.emplace_back("this can be read only once: O26 and O32 are not told in full");
    }
    return judged(std::move(summary), {.before = size, .after = sizeOf(file)}, reader.failed());
}

int inspect(int argc, const char* const* argv, std::ostream& out, std::ostream& errors, bool terminal) {
    InspectOptions options;
    CommandLine commandLine(options);
    try {
        commandLine.parse(argc, argv);
    } catch (const std::exception& error) {
        errors << "orbconv-inspect: " << error.what() << "\nTry orbconv-inspect --help.\n";
        return notReadable;
    }
    if (commandLine.wantsHelp()) {
        commandLine.printHelp(out);
        return nothingWrong;
    }
    if (commandLine.wantsVersion()) {
        out << "orbconv-inspect " << reading::versionNumber << '\n';
        return nothingWrong;
    }
    if (const std::string why = whyNoPage(options); !why.empty()) {
        errors << "orbconv-inspect: " << options.htmlFile << ": " << why << '\n';
        return notReadable;
    }
    return run(options, out, errors, terminal);
}

}  // namespace orbconv::inspect
