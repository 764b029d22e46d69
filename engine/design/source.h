// What every reader of designs produces: layers by name, and the objects of each.
//
// Everything that a layer or an object answers from is shared with the source it came from,
// so that a database may be closed before them. Readers throw ReadError, and nothing else but
// std::bad_alloc.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engine/design/object_record.h"
#include "platform/colour.h"

namespace zol::engine::design {

/// The objects of a layer. Numbers are from 0 to below Count().
class LayerSource {
public:
    virtual ~LayerSource() = default;
    LayerSource(const LayerSource&) = delete;
    LayerSource& operator=(const LayerSource&) = delete;

    virtual std::string Name() const = 0;
    virtual std::string Description() const = 0;
    /// The first call may have to go through the whole layer.
    virtual std::size_t Count() = 0;
    virtual ObjectRecord Read(std::size_t object) = 0;

protected:
    LayerSource() = default;
};

class Source {
public:
    virtual ~Source() = default;
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;

    /// In the order of the source; the same as long as it is open.
    virtual const std::vector<std::string>& LayerNames() const = 0;
    /// The position of the layer of that name, by the source's own rule of what is the same.
    virtual std::optional<std::size_t> FindLayer(const std::string& name) const = 0;
    virtual std::unique_ptr<LayerSource> OpenLayer(std::size_t position) = 0;
    /// What the colours of all objects stand for; empty when there are none.
    virtual std::vector<graphics::RGB> ColourTable() const = 0;

protected:
    Source() = default;
};

/// Opens a drawing, a file that holds layers, or a server by its connection string. Which of
/// them is told by the name's prefix and the file's content.
std::unique_ptr<Source> open_source(const std::string& name);

}  // namespace zol::engine::design
