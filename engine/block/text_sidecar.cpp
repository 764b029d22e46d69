#include "engine/block/text_sidecar.h"

#include "engine/formats/diagnostics.h"
#include "engine/formats/file.h"
#include "engine/formats/read_error.h"
#include "engine/formats/sidecar_file.h"
#include "engine/formats/table_survey.h"
#include "engine/formats/text_encoding.h"

namespace zol::engine::block {

namespace {

std::string folder_of(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == path.npos ? std::string() : path.substr(0, slash + 1);
}

std::string file_name_of(const std::string& path) {
    return path.substr(folder_of(path).size());
}

CellFormat::Kind kind_of_type(const JsonValue& type) {
    const std::string name = type.Text();
    return name == "number"    ? CellFormat::Kind::Number
           : name == "integer" ? CellFormat::Kind::Whole
           : name == "boolean" ? CellFormat::Kind::Boolean
                               : CellFormat::Kind::Text;
}

void read_default(const JsonValue& value, FieldSpec& field) {
    if (value.IsText()) {
        field.default_text = value.Text();
    } else if (value.IsBool()) {
        field.default_number = value.Bool() ? 1 : 0;
    } else {
        field.default_number = value.Number();
    }
}

FieldSpec read_field(const JsonValue& value) {
    FieldSpec field;
    field.name = value.Get("name").Text();
    if (const auto header = value.Find("block:column")) {
        field.header = header->Text();
    }
    if (const auto title = value.Find("title")) {
        field.description = title->Text();
    }
    if (const auto description = value.Find("description")) {
        field.description = description->Text();
    }
    if (const auto unit = value.Find("block:unit"); unit && !unit->Text().empty()) {
        field.description += (field.description.empty() ? "[" : " [") + unit->Text() + "]";
    }
    if (const auto type = value.Find("type")) {
        field.kind = kind_of_type(*type);
    }
    if (const auto storage = value.Find("block:storage")) {
        Storage known{};
        if (!storage_from_name(storage->Text(), known)) {
            storage->Refuse("is " + shown(storage->Text()) +
                            ", one of bit, byte, short, integer, int64, sfloat, float, double, "
                            "string is expected");
        }
        field.storage = known;
    }
    if (const auto point = value.Find("decimalChar")) {
        field.decimal_point = read_character(*point);
    }
    if (const auto group = value.Find("groupChar")) {
        field.group_mark = read_character(*group);
    }
    if (const auto bare = value.Find("bareNumber")) {
        field.bare_number = bare->Bool();
    }
    if (const auto missing = value.Find("missingValues")) {
        field.missing = read_texts(*missing);
    }
    if (const auto word = value.Find("block:role")) {
        ColumnRole role;
        if (!role_of_word(word->Text(), role)) {
            word->Refuse("is " + shown(word->Text()) + ", which is no role of a column");
        }
        field.role = role;
    }
    if (const auto names = value.Find("block:translations")) {
        field.translations = read_translations(*names);
    } else if (const auto categories = value.Find("categories")) {
        field.translations = read_translations(*categories);
    } else if (const auto constraints = value.Find("constraints")) {
        // An enumeration of texts names the codes too; one of numbers is a mere constraint.
        const auto words = constraints->Find("enum");
        if (words && words->Size() > 0 && words->At(0).IsText()) {
            field.translations = read_translations(*words);
        }
    }
    if (const auto fallback = value.Find("block:default")) {
        read_default(*fallback, field);
    }
    return field;
}

void read_dialect(const JsonValue& value, TextSidecar& sidecar) {
    if (const auto delimiter = value.Find("delimiter")) {
        const char mark = read_character(*delimiter);
        if (mark == '\0' || mark == '\n' || mark == '\r' || mark == '"') {
            delimiter->Refuse("can't part cells");
        }
        sidecar.dialect.delimiter = mark;
    }
    if (const auto quote = value.Find("quoteChar")) {
        sidecar.dialect.quote = read_character(*quote);
    }
    if (const auto doubled = value.Find("doubleQuote")) {
        sidecar.dialect.double_quote = doubled->Bool();
    }
    if (const auto escape = value.Find("escapeChar")) {
        sidecar.dialect.escape = read_character(*escape);
    }
    if (const auto comment = value.Find("commentChar")) {
        sidecar.dialect.comment = read_character(*comment);
    }
    if (const auto missing = value.Find("nullSequence")) {
        sidecar.missing = {"", missing->Text()};
    }
    if (const auto rows = value.Find("headerRows")) {
        std::vector<std::int64_t> numbers;
        for (std::size_t i = 0; i < rows->Size(); ++i) {
            const std::int64_t row = rows->At(i).Whole();
            if (row < 1 || row > 100) {
                rows->At(i).Refuse("is not a row from 1 to 100");
            }
            numbers.push_back(row);
        }
        sidecar.dialect.header_rows = numbers;
    }
    if (const auto header = value.Find("header"); header && !sidecar.dialect.header_rows) {
        sidecar.dialect.header_rows =
            header->Bool() ? std::vector<std::int64_t>{1} : std::vector<std::int64_t>{};
    }
}

SchemaFacts read_schema(const JsonValue& value) {
    const std::array<double, 6> box = read_extent(value.Get("extent"));
    const Counts dimensions = read_counts(value.Get("count"));
    SchemaFacts facts;
    facts.extent = {box[0], box[1], box[2], box[3], box[4], box[5]};
    facts.dimensions = {static_cast<std::int32_t>(dimensions[0]),
                        static_cast<std::int32_t>(dimensions[1]),
                        static_cast<std::int32_t>(dimensions[2])};
    Triple cell{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        cell[axis] = (box[axis + 3] - box[axis]) / static_cast<double>(dimensions[axis]);
    }
    const auto least = value.Find("minimumSize");
    const auto most = value.Find("maximumSize");
    const Triple minimum = least ? read_sizes(*least) : cell;
    const Triple maximum = most ? read_sizes(*most) : cell;
    facts.minimum_size = {minimum[0], minimum[1], minimum[2]};
    facts.maximum_size = {maximum[0], maximum[1], maximum[2]};
    return facts;
}

void read_rotation(const JsonValue& value, ModelSpec& model) {
    if (const auto angles = value.Find("rotation")) {
        model.angles = read_coordinates(*angles);
        if (model.angles->x == 0 && model.angles->y == 0 && model.angles->z == 0) {
            model.angles.reset();
        }
    } else if (const auto matrix = value.Find("rotationMatrix")) {
        const std::vector<double> numbers = matrix->Numbers(9);
        Rotation rotation{};
        for (std::size_t i = 0; i < 9; ++i) {
            rotation[i / 3][i % 3] = numbers[i];
        }
        if (const char* fault = Placement::RotationFault(rotation)) {
            matrix->Refuse(fault);
        }
        model.rotation = rotation;
    }
}

ModelSpec read_model(const JsonValue& value) {
    ModelSpec model;
    if (const auto origin = value.Find("origin")) {
        model.origin = read_coordinates(*origin);
    }
    read_rotation(value, model);
    if (const auto kind = value.Find("coordinates")) {
        const std::string word = kind->Text();
        if (word != "world" && word != "local") {
            kind->Refuse("is " + shown(word) + ", \"world\" or \"local\" is expected");
        }
        model.local = word == "local";
    }
    if (const auto size = value.Find("parentSize")) {
        model.parent_size = read_sizes(*size);
    }
    if (const auto size = value.Find("minimumSize")) {
        model.minimum_size = read_sizes(*size);
    }
    if (const auto count = value.Find("count")) {
        model.count = read_counts(*count);
    }
    if (const auto box = value.Find("extent")) {
        model.extent = read_extent(*box);
    }
    if (const auto order = value.Find("order")) {
        model.order = read_cell_order(*order);
    }
    if (const auto base = value.Find("indexBase")) {
        model.index_base = base->Whole();
        if (model.index_base != 0 && model.index_base != 1) {
            base->Refuse("is neither 0 nor 1");
        }
    }
    if (const auto layered = value.Find("layered")) {
        model.layered = layered->Bool();
    }
    if (const auto schemas = value.Find("schemas")) {
        for (std::size_t i = 0; i < schemas->Size(); ++i) {
            model.schemas.push_back(read_schema(schemas->At(i)));
        }
    }
    return model;
}

void check_path(const JsonValue& path) {
    const std::string text = path.Text();
    const bool leaves = text.starts_with("/") || text == ".." || text.starts_with("../") ||
                        text.ends_with("/..") || text.find("/../") != text.npos ||
                        text.find("://") != text.npos;
    if (leaves) {
        path.Refuse("is " + shown(text) + ", which leaves the folder of the sidecar");
    }
}

// What `read` finds wrong names the sidecar.
template <class Read>
auto naming_sidecar(const std::string& path, Read read) {
    try {
        return read();
    } catch (const ReadError& error) {
        throw ReadError("in the sidecar " + file_name_of(path) + ": " + error.what());
    }
}

bool is_path_of(const std::string& path, const std::string& table) {
    const std::string name = file_name_of(table);
    return path == name || path == "./" + name;
}

bool speaks_of_table(const JsonValue& root, const std::string& table) {
    if (!root.IsObject()) {
        return false;
    }
    const auto path = root.Find("path");
    if (!path) {
        return root.Find("schema") || root.Find("block:model");
    }
    if (path->IsList()) {
        // A table in parts is another thing than this one.
        return path->Size() == 1 && path->At(0).IsText() && is_path_of(path->At(0).Text(), table);
    }
    return path->IsText() && is_path_of(path->Text(), table);
}

// What a JSON file that may belong to anything says of the table: the file's own object,
// or one of its resources.
std::optional<TextSidecar> find_in(const std::string& path, const std::string& table) {
    if (!File::Exists(path) || path == table) {
        return std::nullopt;
    }
    std::optional<JsonDocument> document;
    try {
        document.emplace(read_sidecar_file(path), JsonDocument::Dialect::Strict);
    } catch (const ReadError& error) {
        report(table, file_name_of(path) + " beside it is passed over: " + error.what());
        return std::nullopt;
    }
    const JsonValue root = document->Root();
    if (!root.IsObject()) {
        return std::nullopt;
    }
    std::optional<JsonValue> found;
    if (const auto resources = root.Find("resources"); resources && resources->IsList()) {
        for (std::size_t i = 0; !found && i < resources->Size(); ++i) {
            const JsonValue resource = resources->At(i);
            if (resource.IsObject() && resource.Find("path") && speaks_of_table(resource, table)) {
                found = resource;
            }
        }
    } else if (speaks_of_table(root, table)) {
        found = root;
    }
    if (!found) {
        return std::nullopt;
    }
    return naming_sidecar(path, [&] {
        TextSidecar sidecar = parse_sidecar(*found);
        sidecar.path = path;
        return sidecar;
    });
}

}  // namespace

TextSidecar parse_sidecar(const JsonValue& root) {
    TextSidecar sidecar;
    if (const auto path = root.Find("path")) {
        check_path(path->IsList() && path->Size() == 1 ? path->At(0) : *path);
    }
    if (const auto name = root.Find("name")) {
        sidecar.name = name->Text();
    }
    if (const auto encoding = root.Find("encoding")) {
        sidecar.encoding = encoding->Text();
        if (!is_known_encoding(sidecar.encoding)) {
            encoding->Refuse("is " + shown(sidecar.encoding) + ", an encoding unknown here");
        }
    }
    if (const auto dialect = root.Find("dialect")) {
        read_dialect(*dialect, sidecar);
    }
    if (const auto schema = root.Find("schema")) {
        if (const auto missing = schema->Find("missingValues")) {
            sidecar.missing = read_texts(*missing);
        }
        if (const auto fields = schema->Find("fields")) {
            for (std::size_t i = 0; i < fields->Size(); ++i) {
                sidecar.fields.push_back(read_field(fields->At(i)));
            }
        }
    }
    if (const auto model = root.Find("block:model")) {
        sidecar.model = read_model(*model);
    }
    return sidecar;
}

TextSidecar find_sidecar(const std::string& table) {
    const std::string beside = table + ".json";
    if (File::Exists(beside)) {
        return naming_sidecar(beside, [&] {
            const JsonDocument document(read_sidecar_file(beside), JsonDocument::Dialect::Strict);
            TextSidecar sidecar = parse_sidecar(document.Root());
            sidecar.path = beside;
            return sidecar;
        });
    }
    const std::string folder = folder_of(table);
    const std::string name = file_name_of(table);
    const std::string same_stem = folder + name.substr(0, name.rfind('.')) + ".json";
    if (auto found = find_in(same_stem, table)) {
        return *found;
    }
    return find_in(folder + "datapackage.json", table).value_or(TextSidecar{});
}

}  // namespace zol::engine::block
