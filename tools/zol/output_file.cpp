#include "tools/zol/output_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "tools/zol/exit_codes.h"

namespace zol::tool {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const std::string& name) {
    const int error = errno;
    throw WriteFailure("can't write " + name + ": " + std::generic_category().message(error),
                       false);
}

bool is_same(const std::string& a, const std::string& b) {
    std::error_code ignored;
    return fs::equivalent(a, b, ignored);
}

/// Whether `file` is what `source` names, itself or by the part before the last '#'.
bool is_source(const std::string& file, const std::string& source) {
    return is_same(file, source) || is_same(file, source.substr(0, source.rfind('#')));
}

/// The file itself where `file` is a link to one, so that the link stays.
std::string resolved(const std::string& file) {
    std::error_code error;
    const fs::path path = fs::canonical(file, error);
    return error ? file : path.string();
}

}  // namespace

OutputFile::OutputFile(const std::string& file, const std::vector<std::string>& sources)
    : name_("'" + file + "'") {
    if (std::any_of(sources.begin(), sources.end(),
                    [&](const std::string& source) { return is_source(file, source); })) {
        throw UsageError(name_ + " is the file that is read, and stays as it is.");
    }
    std::error_code ignored;
    const fs::file_status status = fs::status(file, ignored);
    const bool is_new = !fs::exists(status);
    target_ = resolved(file);
    if (is_new || fs::is_regular_file(status)) {
        unfinished_ = target_ + "." + std::to_string(getpid()) + ".part";
    }
    constexpr unsigned kReadableByAll = 0666;
    const mode_t mode =
        is_new ? kReadableByAll : static_cast<mode_t>(status.permissions() & fs::perms::all);
    const std::string& opened = unfinished_.empty() ? file : unfinished_;
    descriptor_ = open(opened.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, mode);
    if (descriptor_ < 0) {
        unfinished_.clear();
        fail(name_);
    }
    output_.emplace(descriptor_, name_);
}

OutputFile::~OutputFile() {
    if (descriptor_ >= 0) close(descriptor_);
    if (!unfinished_.empty()) std::remove(unfinished_.c_str());
}

void OutputFile::Finish() {
    output_->Flush();
    // Some file systems tell only here that there was no room.
    const int closed = close(descriptor_);
    descriptor_ = -1;
    if (closed != 0) fail(name_);
    if (unfinished_.empty()) return;
    if (std::rename(unfinished_.c_str(), target_.c_str()) != 0) fail(name_);
    unfinished_.clear();
}

void write_to(const std::optional<std::string>& to, const std::vector<std::string>& sources,
              Output& output, const std::function<void(Output&)>& write) {
    if (!to) return write(output);
    OutputFile file(*to, sources);
    write(file.Stream());
    file.Finish();
}

ProgressBar::Meanwhile meanwhile_of(const std::optional<std::string>& to) {
    return to ? ProgressBar::Meanwhile::Nothing : ProgressBar::Meanwhile::Rows;
}

}  // namespace zol::tool
