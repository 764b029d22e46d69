// The surroundings in which GDAL is called: all calls of it stand inside a GdalScope.
//
// GDAL belongs to the host program as much as to us, so what is set here is of this
// thread alone and is put back: the error handler, the last error, the options.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace zol::engine::grid {

class GdalScope {
public:
    /// Whether GDAL's network file systems may be reached.
    enum class Network { Closed, Open };

    explicit GdalScope(Network network);
    GdalScope(const GdalScope&) = delete;
    GdalScope& operator=(const GdalScope&) = delete;
    ~GdalScope();

    /// The first thing that GDAL said was wrong; `otherwise` when it said nothing.
    std::string Error(const std::string& otherwise) const;
    const std::vector<std::string>& Warnings() const { return said_->warnings; }

    /// What GDAL said in the scope; kept apart, since GDAL holds a pointer to it.
    struct Said {
        std::vector<std::string> errors;
        std::vector<std::string> warnings;
    };

private:
    struct Kept;

    std::unique_ptr<Said> said_;
    std::unique_ptr<Kept> kept_;
};

}  // namespace zol::engine::grid
