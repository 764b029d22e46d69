#include "engine/grid/gdal_scope.h"

#include <cpl_conv.h>
#include <cpl_error.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <utility>

namespace zol::engine::grid {

namespace {

constexpr std::size_t kMostTexts = 5;
constexpr std::size_t kLongestText = 500;

struct Option {
    const char* name;
    const char* value;
};

constexpr std::array kOptions = {
    // Nothing is written beside a file, and nothing read that a program left there.
    Option{"GDAL_PAM_ENABLED", "NO"},
    // Nodes are where the file says, whatever the host program's other readers are told.
    Option{"GTIFF_POINT_GEO_IGNORE", "NO"},
    // Numbers of text rasters keep their digits.
    Option{"AAIGRID_DATATYPE", "Float64"},
    Option{"GRASSASCIIGRID_DATATYPE", "Float64"},
    Option{"GXF_DATATYPE", "Float64"},
};

// Kept out by a name that no file of a network has.
constexpr Option kNoNetwork = {"CPL_VSIL_CURL_ALLOWED_FILENAME", "/vsicurl/none"};

/// One line, whatever GDAL made of it.
void add(std::vector<std::string>& texts, const char* text) {
    if (texts.size() < kMostTexts) {
        std::string line = std::string(text).substr(0, kLongestText);
        std::replace_if(
            line.begin(), line.end(), [](char c) { return c == '\n' || c == '\r' || c == '\t'; },
            ' ');
        line.erase(line.find_last_not_of(' ') + 1);
        texts.push_back(std::move(line));
    }
}

void CPL_STDCALL listen(CPLErr level, CPLErrorNum, const char* text) {
    auto* const said = static_cast<GdalScope::Said*>(CPLGetErrorHandlerUserData());
    try {
        if (level == CE_Warning) {
            add(said->warnings, text);
        } else if (level == CE_Failure || level == CE_Fatal) {
            add(said->errors, text);
        }
    } catch (...) {
        // GDAL's code can't be left by an exception; a text less is the smaller loss.
        return;
    }
}

/// Sets an option of this thread and puts the old one back.
class ThreadOption {
public:
    explicit ThreadOption(const Option& option) : name_(option.name) {
        if (const char* const value = CPLGetThreadLocalConfigOption(name_, nullptr)) {
            before_ = value;
        }
        CPLSetThreadLocalConfigOption(name_, option.value);
    }
    ThreadOption(const ThreadOption&) = delete;
    ThreadOption& operator=(const ThreadOption&) = delete;
    ~ThreadOption() { CPLSetThreadLocalConfigOption(name_, before_ ? before_->c_str() : nullptr); }

private:
    const char* name_;
    std::optional<std::string> before_;
};

}  // namespace

struct GdalScope::Kept {
    CPLErrorStateBackuper last_error;
    std::array<std::optional<ThreadOption>, kOptions.size() + 1> options;
};

GdalScope::GdalScope(Network network)
    : said_(std::make_unique<Said>()), kept_(std::make_unique<Kept>()) {
    for (std::size_t i = 0; i < kOptions.size(); ++i) {
        kept_->options[i].emplace(kOptions[i]);
    }
    if (network == Network::Closed) {
        kept_->options.back().emplace(kNoNetwork);
    }
    CPLErrorReset();
    CPLPushErrorHandlerEx(listen, said_.get());
}

GdalScope::~GdalScope() {
    CPLPopErrorHandler();
}

std::string GdalScope::Error(const std::string& otherwise) const {
    return said_->errors.empty() ? otherwise : said_->errors.front();
}

}  // namespace zol::engine::grid
