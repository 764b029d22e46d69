#include "engine/block/text_source.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "engine/block/text_layout.h"
#include "engine/block/text_sidecar.h"
#include "engine/block/text_variables.h"
#include "engine/block/unique_names.h"
#include "engine/formats/diagnostics.h"
#include "engine/formats/read_error.h"
#include "engine/formats/table_survey.h"
#include "engine/formats/text_encoding.h"
#include "engine/formats/text_head.h"

namespace zol::engine::block {

namespace {

// Holds the header and the rows behind it that the separator is told from.
constexpr std::size_t kHeadBytes = std::size_t{1} << 20;
// A block's number has 32 bits in the indexes, less one value.
constexpr std::uint64_t kMostRows = 0xFFFFFFFE;

TextHead read_head(const File& file, const TextSidecar& sidecar) {
    std::string head(std::min<std::uint64_t>(kHeadBytes, file.Size()), '\0');
    head.resize(file.ReadAt(0, head.data(), head.size()));
    TextHints hints = sidecar.dialect;
    hints.one_column_will_do = !sidecar.path.empty();
    hints.is_known_name = [](std::string_view name) {
        const Role role = role_of_header(name).role;
        return role != Role::None && role != Role::CellNumber;
    };
    return read_text_head(head, head.size() == file.Size(), hints);
}

// What the second line of a gridded text says, as far as the sidecar leaves it open.
void add_lattice(const StatedLattice& lattice, ModelSpec& model) {
    if (model.count || model.extent) {
        return;
    }
    model.count = Counts{lattice.count[0], lattice.count[1], lattice.count[2]};
    model.parent_size = Triple{lattice.size[0], lattice.size[1], lattice.size[2]};
    if (!model.origin) {
        model.origin = geometry::Coord3D(lattice.first_centroid[0] - lattice.size[0] / 2,
                                         lattice.first_centroid[1] - lattice.size[1] / 2,
                                         lattice.first_centroid[2] - lattice.size[2] / 2);
    }
}

std::string name_of(const File& file, const TextSidecar& sidecar) {
    if (!sidecar.name.empty()) {
        return sidecar.name;
    }
    const std::string name = file.Path().substr(file.Path().rfind('/') + 1);
    const std::size_t dot = name.rfind('.');
    return dot == 0 ? name : name.substr(0, dot);
}

// UTF-8 is tried on every text; what isn't must then be in something else.
std::string other_encoding(const TextSidecar& sidecar) {
    const std::string& stated = sidecar.encoding;
    const bool is_utf8_stated =
        stated == "utf-8" || stated == "UTF-8" || stated == "utf8" || stated == "UTF8";
    return is_utf8_stated ? std::string() : stated;
}

std::vector<std::string> names_in_utf8(const std::vector<std::string>& names,
                                       const std::string& encoding) {
    std::vector<std::string> texts;
    for (const std::string& name : names) {
        texts.push_back(to_utf8(trimmed(name), encoding));
    }
    return texts;
}

}  // namespace

Source open_text(const std::shared_ptr<const File>& file, const std::string& element) {
    TextSidecar sidecar = find_sidecar(file->Path());
    const std::string encoding = other_encoding(sidecar);
    const TextHead head = read_head(*file, sidecar);

    Source source;
    source.name = name_of(*file, sidecar);
    if (!element.empty() && element != source.name) {
        throw ReadError("the file holds one model, " + shown(source.name) + ", and none named " +
                        shown(element));
    }
    std::vector<TextColumn> columns =
        match_columns(names_in_utf8(head.names, encoding), sidecar, file->Path());
    std::vector<ColumnRole> roles;
    for (const TextColumn& column : columns) {
        roles.push_back(column.role);
    }
    const bool has_coordinates =
        std::find(roles.begin(), roles.end(), ColumnRole{Role::Centroid, 0}) != roles.end();
    if (head.lattice && !has_coordinates) {
        add_lattice(*head.lattice, sidecar.model);
    }
    TextLayout layout(roles, sidecar.model);
    for (const std::size_t watched : layout.Watched()) {
        columns[watched].is_geometry = true;
    }
    std::vector<CellFormat> formats;
    for (const TextColumn& column : columns) {
        formats.push_back(survey_format(column, sidecar, head.decimal_point));
    }
    TextBlocks blocks(file, head.dialect, head.data_begin);
    const TableSurvey survey =
        survey_table(blocks, formats, layout.Watched(), [&] { return layout.MakeWatcher(); });
    if (blocks.Rows() > kMostRows) {
        throw ReadError("the table has more rows than can be numbered");
    }
    std::vector<Storage> storages;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const ColumnSurvey& seen = survey.columns[i];
        if (formats[i].kind == CellFormat::Kind::Guess && seen.HasStrayText()) {
            report(file->Path(), "column " + shown(columns[i].header) + ": " + seen.first_text +
                                     " on line " +
                                     std::to_string(blocks.LineOf(seen.first_text_offset)) +
                                     " is no number, so the column is text; a sidecar can list it "
                                     "in missingValues");
        }
        storages.push_back(settle_storage(columns[i], seen, formats[i]));
    }
    const auto table =
        std::make_shared<TextColumns>(std::move(blocks), std::move(formats), encoding);
    layout.LayOut(survey.watchers, table, source);

    UniqueNames names;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const bool hidden = columns[i].is_geometry ||
                            (columns[i].field.role && columns[i].field.role->role != Role::None);
        if (hidden) {
            continue;
        }
        const std::string& wanted =
            columns[i].has_field ? columns[i].field.name : columns[i].header;
        const std::string name = names.Take(wanted);
        if (name != wanted) {
            report(file->Path(), "column " + shown(columns[i].header) + " is the variable " +
                                     shown(name) + ", since its name is taken or too long");
        }
        source.variables.push_back(make_variable(columns[i], i, name, storages[i], table));
    }
    return source;
}

}  // namespace zol::engine::block
