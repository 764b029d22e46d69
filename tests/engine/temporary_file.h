// A file that a test writes and that goes away with it.
#pragma once

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace zol::testing_support {

class TemporaryFile {
public:
    explicit TemporaryFile(std::string_view content) {
        const char* folder = std::getenv("TMPDIR");
        path_ = std::string(folder == nullptr ? "/tmp" : folder) + "/zol_test_XXXXXX";
        const int descriptor = ::mkstemp(path_.data());
        if (descriptor < 0) throw std::runtime_error("no temporary file");
        ::close(descriptor);
        Rewrite(content);
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        ::unlink(path_.c_str());
        if (has_sidecar_) ::unlink((path_ + ".json").c_str());
    }

    const std::string& Path() const { return path_; }

    void Rewrite(std::string_view content) { Write(path_, content); }
    /// Writes "<path>.json" beside it.
    void WriteSidecar(std::string_view content) {
        has_sidecar_ = true;
        Write(path_ + ".json", content);
    }

private:
    static void Write(const std::string& path, std::string_view content) {
        std::ofstream out(path, std::ios::binary);
        out.write(content.data(), static_cast<std::streamsize>(content.size()));
        if (!out.flush()) throw std::runtime_error("can't write " + path);
    }

    std::string path_;
    bool has_sidecar_ = false;
};

}  // namespace zol::testing_support
