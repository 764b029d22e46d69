#include "engine/formats/dxf/dxf_file.h"

#include <string>
#include <string_view>

#include "engine/formats/diagnostics.h"
#include "engine/formats/dxf/drawing_builder.h"
#include "engine/formats/dxf/entities.h"
#include "engine/formats/dxf/entity.h"
#include "engine/formats/dxf/insertions.h"
#include "engine/formats/dxf/object_section.h"
#include "engine/formats/dxf/tables.h"
#include "engine/formats/dxf/tag_reader.h"
#include "engine/formats/read_error.h"

namespace zol::engine {

namespace {

struct EntityKind {
    std::string_view name;
    MakeShape make;
    bool lists = false;
};

constexpr EntityKind kKinds[] = {
    {"LINE", make_line},
    {"POINT", make_point},
    {"ARC", make_arc},
    {"CIRCLE", make_circle},
    {"ELLIPSE", make_ellipse},
    {"SPLINE", make_spline, true},
    {"3DFACE", make_3d_face},
    {"SOLID", make_solid},
    {"TRACE", make_solid},
    {"TEXT", make_text},
    {"ATTRIB", make_text},
    {"MTEXT", make_multiline_text},
    {"LEADER", make_leader, true},
    {"DIMENSION", make_dimension},
    {"ARC_DIMENSION", make_arc_dimension},
    {"LARGE_RADIAL_DIMENSION", make_large_radial_dimension},
};

constexpr std::uint8_t primitive_of(std::string_view name) {
    for (std::size_t i = 0; i < std::size(kPrimitives); ++i) {
        if (kPrimitives[i] == name) return static_cast<std::uint8_t>(i);
    }
    return 0;
}

class DxfReader {
public:
    explicit DxfReader(const File& file)
        : file_(file), tags_(file), builder_(file), insertions_(builder_) {
        if (tags_.IsBinary()) builder_.Decoder().SetBinary();
    }

    Drawing Read() {
        bool has_begun = false;
        while (tags_.Next()) {
            if (tags_.Begins("SECTION")) {
                has_begun = true;
                ReadSection();
            } else if (!has_begun) {
                tags_.Refuse("a drawing begins with a section");
            }
        }
        if (!has_entities_) throw ReadError("it has no section of entities");
        Drawing drawing = builder_.Finish();
        Report(drawing);
        return drawing;
    }

private:
    void ReadSection() {
        if (!tags_.Next() || tags_.Code() != 2) tags_.Refuse("a section has no name");
        const std::string name(without_blanks(tags_.Text()));
        if (name == "HEADER") {
            read_header(tags_, builder_);
        } else if (name == "TABLES") {
            read_tables(tags_, entity_, builder_);
        } else if (name == "BLOCKS") {
            ReadEntities("BLOCKS");
        } else if (name == "ENTITIES") {
            has_entities_ = true;
            ReadEntities("ENTITIES");
        } else if (name == "OBJECTS" && !has_objects_) {
            has_objects_ = true;
            read_object_section(tags_, builder_);
        } else {
            if (name == "OBJECTS") builder_.Skip("OBJECTS (a second section)");
            SkipSection(name);
        }
    }

    void SkipSection(const std::string& name) {
        while (tags_.Next()) {
            if (tags_.Begins("ENDSEC")) return;
        }
        tags_.Refuse("the file ends inside the section " + quoted(name));
    }

    void ReadEntities(const std::string& section) {
        while (tags_.Next()) {
            if (tags_.Code() != 0) continue;
            if (tags_.Begins("ENDSEC")) {
                insertions_.EndBlock();
                return;
            }
            if (section == "BLOCKS" && tags_.Begins("BLOCK")) {
                entity_.Begin();
                entity_.TakeAll(tags_);
                insertions_.BeginBlock(entity_.Text(2), entity_.Point(10));
            } else if (tags_.Begins("ENDBLK")) {
                insertions_.EndBlock();
            } else if (section != "BLOCKS" || insertions_.IsInBlock()) {
                ReadEntity();
            }
        }
        tags_.Refuse("the file ends inside the section " + section);
    }

    void ReadEntity() {
        const std::size_t first = builder_.Data().objects.Size();
        if (tags_.Begins("LWPOLYLINE")) {
            ReadLightPolyline();
        } else if (tags_.Begins("POLYLINE")) {
            ReadPolyline();
        } else if (tags_.Begins("INSERT")) {
            ReadInsertion();
        } else if (tags_.Begins("MULTILEADER") || tags_.Begins("MLEADER")) {
            ReadMultileader();
        } else if (tags_.Begins("ATTRIB")) {
            ReadKind(insertion_block_);
            return;
        } else if (!ReadKind(kNone)) {
            if (!tags_.Begins("SEQEND") && !insertions_.IsInBlock()) builder_.Skip(tags_.Text());
            return;
        }
        builder_.OwnDictionary(entity_, first);
    }

    // False for an entity that is of none of the kinds in the table.
    bool ReadKind(std::uint32_t block) {
        for (const EntityKind& kind : kKinds) {
            if (!tags_.Begins(kind.name)) continue;
            entity_.Begin(kind.lists);
            entity_.TakeAll(tags_);
            if (IsOnPaper()) return true;
            DrawingRecord record = builder_.Record(entity_, primitive_of(kind.name));
            record.block = block;
            const std::size_t points = builder_.Data().points.Size();
            if (kind.make(entity_, record, builder_)) {
                insertions_.Add(record);
            } else {
                builder_.Data().points.SetSize(points);
                SkipShapeless(kind.name);
            }
            return true;
        }
        return false;
    }

    void SkipShapeless(std::string_view name) {
        builder_.Skip(std::string(name) + " (whose values make no shape)");
    }

    // Of a block it is not asked: a layout is one too.
    bool IsOnPaper() {
        if (insertions_.IsInBlock() || entity_.Whole(67) != 1) return false;
        builder_.Skip("entities on paper");
        return true;
    }

    void ReadLightPolyline() {
        entity_.Begin();
        VertexList vertices(builder_);
        read_light_polyline(tags_, entity_, vertices);
        if (IsOnPaper()) {
            vertices.Drop();
            return;
        }
        DrawingRecord record = builder_.Record(entity_, primitive_of("LWPOLYLINE"));
        if (finish_light_polyline(entity_, vertices, record, builder_)) {
            insertions_.Add(record);
        } else {
            SkipShapeless("LWPOLYLINE");
        }
    }

    void ReadPolyline() {
        entity_.Begin();
        entity_.TakeAll(tags_);
        VertexList vertices(builder_);
        const bool is_line = read_vertices(tags_, entity_, vertices);
        if (IsOnPaper()) {
            vertices.Drop();
            return;
        }
        if (!is_line) {
            builder_.Skip("POLYLINE (a mesh)");
            return;
        }
        DrawingRecord record = builder_.Record(entity_, primitive_of("POLYLINE"));
        if (finish_polyline(entity_, vertices, record, builder_)) {
            insertions_.Add(record);
        } else {
            SkipShapeless("POLYLINE");
        }
    }

    void ReadInsertion() {
        entity_.Begin();
        entity_.TakeAll(tags_);
        insertion_block_ = kNone;
        if (IsOnPaper()) return;
        const Insertion insertion =
            Insertions::FromEntity(entity_, builder_.Record(entity_, 0), builder_);
        insertion_block_ = builder_.Name(builder_.Decode(entity_.Text(2)));
        insertions_.Add(insertion);
    }

    void ReadMultileader() {
        entity_.Begin();
        const MultileaderParts parts = read_multileader(tags_, entity_);
        if (IsOnPaper()) return;
        const DrawingRecord common = builder_.Record(entity_, primitive_of("MULTILEADER"));
        bool is_seen = false;
        for (std::size_t i = 0; i < parts.lines.size(); ++i) {
            DrawingRecord record = common;
            if (!make_multileader_line(parts, i, record, builder_)) continue;
            insertions_.Add(record);
            is_seen = true;
        }
        if (parts.has_text && !parts.raw_text.empty()) {
            DrawingRecord record = common;
            make_multileader_text(parts, record, builder_);
            insertions_.Add(record);
            is_seen = true;
        }
        if (!is_seen) SkipShapeless("MULTILEADER");
    }

    void Report(const Drawing& drawing) {
        std::string words;
        for (const DrawingSkip& skip : drawing.Skipped()) {
            words += (words.empty() ? "not read: " : ", ") + skip.what + ' ' +
                     std::to_string(skip.count);
        }
        if (!words.empty()) report(file_.Path(), words);
    }

    const File& file_;
    TagReader tags_;
    DrawingBuilder builder_;
    Insertions insertions_;
    Entity entity_;
    // Of the insertion whose attributes follow.
    std::uint32_t insertion_block_ = kNone;
    bool has_entities_ = false;
    // What a second section gives is added to what the first gave, and so on without end.
    bool has_objects_ = false;
};

}  // namespace

Drawing read_dxf(const File& file) {
    return DxfReader(file).Read();
}

}  // namespace zol::engine
