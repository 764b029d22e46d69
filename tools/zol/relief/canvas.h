// A page to draw on, in pixels from its upper left corner, and the PNG that becomes of it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tools/zol/output.h"
#include "tools/zol/relief/colour_map.h"

namespace zol::tool {

struct Rectangle {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;

    double Right() const { return left + width; }
    double Bottom() const { return top + height; }
};

/// Pixels row by row from the top, as 0xAARRGGBB with the colours multiplied by alpha.
struct Image {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;
};

enum class Anchor { Left, Middle, Right };

struct TextStyle {
    double size = 13;
    Anchor anchor = Anchor::Left;
    bool is_bold = false;
};

/// Texts are UTF-8. Where there are no fonts at all, a plain one of the drawing library
/// takes their place.
class Canvas {
public:
    /// Throws std::runtime_error when there is no memory for it.
    Canvas(int width, int height);
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    ~Canvas();

    /// Colour of what is drawn from now on; black at first.
    void Use(const Rgb& colour);
    void Line(double x0, double y0, double x1, double y1);
    void Fill(const Rectangle& area);
    void Frame(const Rectangle& area);
    /// Grey, with diagonal lines.
    void Hatch(const Rectangle& area);
    /// Fills `area`; enlarged cells keep their edges.
    void Draw(const Image& image, const Rectangle& area);
    /// `y` is the baseline.
    void Write(std::string_view text, double x, double y, const TextStyle& style);
    /// From the bottom to the top, with its middle at (x, y).
    void WriteUpwards(std::string_view text, double x, double y, const TextStyle& style);

    double WidthOf(std::string_view text, const TextStyle& style);
    /// Throws std::runtime_error when something could not be drawn.
    void WritePng(Output& output);

private:
    struct Drawing;

    std::unique_ptr<Drawing> drawing_;
};

}  // namespace zol::tool
