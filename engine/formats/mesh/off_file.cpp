#include "engine/formats/mesh/off_file.h"

#include <string>
#include <string_view>
#include <vector>

#include "engine/formats/line_numbers.h"
#include "engine/formats/mesh/off_binary.h"
#include "engine/formats/mesh/off_header.h"
#include "engine/formats/mesh/off_mesh.h"
#include "engine/formats/read_error.h"
#include "engine/formats/text_lines.h"

namespace zol::engine {

namespace {

class OffReader {
public:
    OffReader(const File& file, bool may_have_lines)
        : file_(file),
          lines_(file),
          may_have_lines_(may_have_lines),
          mesh_([this] { return "line " + std::to_string(lines_.Number()); }) {}

    MeshData Read() {
        if (!NextLine()) throw ReadError("it is empty");
        const std::optional<OffKind> kind = take_off_word(rest_);
        if (kind) kind_ = *kind;
        if (kind_.is_binary) return read_binary_off(file_, kind_, lines_.NextOffset());
        if (kind_.states_dimensions && TakeCount() != 3) {
            lines_.Refuse("its points are not of three dimensions");
        }
        const std::int64_t vertices = TakeCount();
        const std::uint64_t first_line = lines_.Number();
        const std::int64_t faces = TakeCount();
        const std::uint64_t second_line = lines_.Number();
        TakeCount();
        // The edges are never used, but without their count a coordinate would be taken for it.
        if (first_line == second_line && lines_.Number() != second_line) {
            throw ReadError("line " + std::to_string(second_line) +
                            ": the counts of vertices, faces and edges are expected");
        }
        constexpr std::uint64_t kLeastOfFace = 8;
        check_off_counts(vertices, faces, file_.Size() + 1, 2 * kind_.PlainNumbers(), kLeastOfFace);
        ReadVertices(vertices);
        for (std::int64_t i = 0; i < faces; ++i) ReadFace();
        PassLine();
        if (!rest_.empty()) lines_.Refuse("there is more than the header counts");
        return mesh_.Finish(file_, "OFF");
    }

    /// Whether each vertex was looked for on a line of its own.
    bool HasLines() const { return has_lines_; }

private:
    bool NextLine() {
        while (lines_.Next(rest_)) {
            const std::size_t begin = rest_.find_first_not_of(" \t");
            if (begin != rest_.npos && rest_[begin] != '#') return true;
        }
        rest_ = {};
        return false;
    }

    // Goes on to the next line when this one has nothing left.
    void PassLine() {
        const std::size_t begin = rest_.find_first_not_of(" \t");
        if (begin == rest_.npos || rest_[begin] == '#') NextLine();
    }

    [[noreturn]] void RefuseWord() {
        const std::string_view word = take_word(rest_);
        lines_.Refuse(word.empty() ? "the file ends before all that its header states"
                                   : quoted(word) + " is no number of the kind that is expected");
    }

    std::int64_t TakeCount() {
        PassLine();
        std::int64_t count = 0;
        if (take_whole(rest_, count) != Taken::Number) RefuseWord();
        return count;
    }

    // How many numbers are left on the line, if it holds nothing else.
    std::size_t NumbersOfLine() {
        std::string_view rest = rest_;
        std::size_t count = 0;
        double number = 0;
        Taken taken;
        while ((taken = take_real(rest, number)) == Taken::Number) ++count;
        return taken == Taken::Nothing ? count : 0;
    }

    // Vertices with a colour have it behind them on their line, whether the first word says so
    // or not. Otherwise they may lie on lines as they like.
    void ReadVertices(std::int64_t count) {
        PassLine();
        const std::size_t plain = kind_.PlainNumbers();
        const std::size_t on_line = NumbersOfLine();
        has_lines_ = may_have_lines_ && (on_line == plain + 3 || on_line == plain + 4 ||
                                         (on_line == plain && !kind_.has_colour));
        const std::size_t by_word = plain + (kind_.has_colour ? 4 : 0);
        for (std::int64_t i = 0; i < count; ++i) {
            MeshPoint point{};
            double weight = 1;
            for (std::size_t k = 0; k < (has_lines_ ? plain : by_word); ++k) {
                double number = 0;
                if (k == 0 || !has_lines_) PassLine();
                if (take_real(rest_, number) != Taken::Number) RefuseWord();
                if (k < 3) point[k] = number;
                if (k == 3 && kind_.is_weighted) weight = number;
            }
            if (has_lines_ && !rest_.empty()) PassColour();
            mesh_.AddPoint(point, weight);
        }
    }

    void PassColour() {
        std::size_t count = 0;
        double number = 0;
        Taken taken;
        while ((taken = take_real(rest_, number)) == Taken::Number) ++count;
        if (taken == Taken::Rubbish) RefuseWord();
        if (count != 0 && count != 3 && count != 4) {
            lines_.Refuse("a vertex has " + std::to_string(count) + " numbers too many");
        }
    }

    void ReadFace() {
        PassLine();
        std::int64_t corners = 0;
        if (take_whole(rest_, corners) != Taken::Number || corners < 0) RefuseWord();
        mesh_.BeginFace();
        for (std::int64_t i = 0; i < corners; ++i) {
            std::int64_t corner = 0;
            const Taken taken = take_whole(rest_, corner);
            if (taken == Taken::Rubbish) RefuseWord();
            if (taken == Taken::Nothing) {
                lines_.Refuse("a face of " + std::to_string(corners) + " corners has " +
                              std::to_string(i) + " on its line");
            }
            mesh_.AddCorner(corner);
        }
        colour_.clear();
        bool is_in_bytes = false;
        if (!rest_.empty()) {
            rest_ = rest_.substr(0, rest_.find('#'));
            is_in_bytes = rest_.find_first_of(".eE") == rest_.npos;
            double part = 0;
            Taken taken;
            while ((taken = take_real(rest_, part)) == Taken::Number) colour_.push_back(part);
            if (taken == Taken::Rubbish) RefuseWord();
            if (colour_.size() == 2 || colour_.size() > 4) {
                lines_.Refuse("a face has a colour of " + std::to_string(colour_.size()) +
                              " numbers");
            }
        }
        mesh_.EndFace(colour_, is_in_bytes);
    }

    const File& file_;
    TextLines lines_;
    bool may_have_lines_;
    bool has_lines_ = false;
    OffKind kind_;
    OffMesh mesh_;
    std::string_view rest_;
    std::vector<double> colour_;
};

}  // namespace

MeshData read_off(const File& file) {
    OffReader reader(file, true);
    try {
        return reader.Read();
    } catch (const ReadError&) {
        // Two points on a line look like one with a colour.
        if (!reader.HasLines()) throw;
        try {
            return OffReader(file, false).Read();
        } catch (const ReadError&) {
            // What was wrong with the lines says more.
        }
        throw;
    }
}

}  // namespace zol::engine
