#include "tools/zol/relief/canvas.h"

#include <cairo.h>

#include <cmath>
#include <cstring>
#include <numbers>
#include <stdexcept>

namespace zol::tool {

namespace {

using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;

constexpr const char* kFont = "DejaVu Sans";

Surface surface_of(int width, int height) {
    return {cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height), &cairo_surface_destroy};
}

void require(cairo_status_t status) {
    if (status != CAIRO_STATUS_SUCCESS) {
        throw std::runtime_error(std::string("can't draw the picture: ") +
                                 cairo_status_to_string(status) + ".");
    }
}

void choose_font(cairo_t* context, const TextStyle& style) {
    cairo_select_font_face(context, kFont, CAIRO_FONT_SLANT_NORMAL,
                           style.is_bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(context, style.size);
}

cairo_text_extents_t extents_of(cairo_t* context, const std::string& text) {
    cairo_text_extents_t extents;
    cairo_text_extents(context, text.c_str(), &extents);
    return extents;
}

double part_left_of(Anchor anchor) {
    switch (anchor) {
        case Anchor::Left:
            return 0;
        case Anchor::Middle:
            return 0.5;
        case Anchor::Right:
            return 1;
    }
    return 0;
}

Surface surface_of(const Image& image) {
    Surface surface = surface_of(image.width, image.height);
    require(cairo_surface_status(surface.get()));
    cairo_surface_flush(surface.get());
    unsigned char* to = cairo_image_surface_get_data(surface.get());
    const int stride = cairo_image_surface_get_stride(surface.get());
    const auto width = static_cast<std::size_t>(image.width);
    for (std::size_t row = 0; row < static_cast<std::size_t>(image.height); ++row) {
        std::memcpy(to + row * static_cast<std::size_t>(stride), image.pixels.data() + row * width,
                    width * sizeof(std::uint32_t));
    }
    cairo_surface_mark_dirty(surface.get());
    return surface;
}

void add_rectangle(cairo_t* context, const Rectangle& area) {
    cairo_rectangle(context, area.left, area.top, area.width, area.height);
}

cairo_status_t append(void* bytes, const unsigned char* data, unsigned length) {
    try {
        static_cast<std::string*>(bytes)->append(data, data + length);
    } catch (const std::bad_alloc&) {
        // Nothing may be thrown through the library, which is in C.
        return CAIRO_STATUS_NO_MEMORY;
    }
    return CAIRO_STATUS_SUCCESS;
}

}  // namespace

struct Canvas::Drawing {
    explicit Drawing(cairo_surface_t* surface) : context(cairo_create(surface)) {}
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;
    ~Drawing() { cairo_destroy(context); }

    cairo_t* context;
};

Canvas::Canvas(int width, int height)
    : drawing_(std::make_unique<Drawing>(surface_of(width, height).get())) {
    require(cairo_status(drawing_->context));
    Use({1, 1, 1});
    cairo_paint(drawing_->context);
    Use({});
    cairo_set_line_width(drawing_->context, 1);
}

Canvas::~Canvas() = default;

void Canvas::Use(const Rgb& colour) {
    cairo_set_source_rgb(drawing_->context, colour.red, colour.green, colour.blue);
}

void Canvas::Line(double x0, double y0, double x1, double y1) {
    cairo_move_to(drawing_->context, x0, y0);
    cairo_line_to(drawing_->context, x1, y1);
    cairo_stroke(drawing_->context);
}

void Canvas::Fill(const Rectangle& area) {
    add_rectangle(drawing_->context, area);
    cairo_fill(drawing_->context);
}

void Canvas::Frame(const Rectangle& area) {
    // A line one pixel wide lies on pixels and not between them.
    add_rectangle(drawing_->context,
                  {area.left - 0.5, area.top - 0.5, area.width + 1, area.height + 1});
    cairo_stroke(drawing_->context);
}

void Canvas::Hatch(const Rectangle& area) {
    constexpr double kApart = 8;
    constexpr Rgb kGround{0.93, 0.93, 0.93};
    constexpr Rgb kLines{0.72, 0.72, 0.72};
    cairo_save(drawing_->context);
    add_rectangle(drawing_->context, area);
    cairo_clip(drawing_->context);
    Use(kGround);
    cairo_paint(drawing_->context);
    Use(kLines);
    const int n_lines = static_cast<int>(std::ceil((area.width + area.height) / kApart));
    for (int n = 0; n < n_lines; ++n) {
        const double x = area.left - area.height + n * kApart;
        Line(x, area.Bottom(), x + area.height, area.top);
    }
    cairo_restore(drawing_->context);
}

void Canvas::Draw(const Image& image, const Rectangle& area) {
    const Surface surface = surface_of(image);
    cairo_t* context = drawing_->context;
    cairo_save(context);
    cairo_translate(context, area.left, area.top);
    cairo_scale(context, area.width / image.width, area.height / image.height);
    cairo_set_source_surface(context, surface.get(), 0, 0);
    const bool is_enlarged = area.width >= image.width && area.height >= image.height;
    cairo_pattern_set_filter(cairo_get_source(context),
                             is_enlarged ? CAIRO_FILTER_NEAREST : CAIRO_FILTER_GOOD);
    cairo_rectangle(context, 0, 0, image.width, image.height);
    cairo_fill(context);
    cairo_restore(context);
}

void Canvas::Write(std::string_view text, double x, double y, const TextStyle& style) {
    const double width = style.anchor == Anchor::Left ? 0 : WidthOf(text, style);
    choose_font(drawing_->context, style);
    cairo_move_to(drawing_->context, x - part_left_of(style.anchor) * width, y);
    cairo_show_text(drawing_->context, std::string(text).c_str());
}

void Canvas::WriteUpwards(std::string_view text, double x, double y, const TextStyle& style) {
    cairo_t* context = drawing_->context;
    cairo_save(context);
    cairo_translate(context, x, y);
    cairo_rotate(context, -std::numbers::pi / 2);
    Write(text, 0, style.size / 3, {style.size, Anchor::Middle, style.is_bold});
    cairo_restore(context);
}

double Canvas::WidthOf(std::string_view text, const TextStyle& style) {
    choose_font(drawing_->context, style);
    return extents_of(drawing_->context, std::string(text)).x_advance;
}

void Canvas::WritePng(Output& output) {
    require(cairo_status(drawing_->context));
    std::string bytes;
    require(cairo_surface_write_to_png_stream(cairo_get_target(drawing_->context), append, &bytes));
    output.Write(bytes);
}

}  // namespace zol::tool
