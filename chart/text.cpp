// text.cpp - see text.h.
#include "chart/text.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <array>
#include <stdexcept>

namespace chart {
namespace {

// Those that draw symbols as wide as kanji come first; any other font may help out.
constexpr const char *families =
    "Noto Sans CJK JP, Noto Sans JP, Source Han Sans JP, Source Han Sans, IPAexGothic, IPAGothic, "
    "TakaoGothic, VL Gothic, BIZ UDGothic, Hiragino Sans, Yu Gothic, Meiryo, MS Gothic, sans-serif";

constexpr Colour faint_colour{0.45, 0.45, 0.45};
constexpr double pair_gap = 3, outline_part = 0.8;

double points(int units) {
    return static_cast<double>(units) / PANGO_SCALE;
}

int units(double length) {
    return static_cast<int>(length * PANGO_SCALE);
}

/** Letters stand where a printer can put them, not where the pixels of a screen are. */
Owned<PangoContext, g_object_unref> context_for_paper() {
    PangoFontMap *const fonts = pango_cairo_font_map_get_default();
    Owned<PangoContext, g_object_unref> context(pango_font_map_create_context(fonts));
    const Owned<cairo_font_options_t, cairo_font_options_destroy> options(
        cairo_font_options_create());
    cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(context.get(), options.get());
    pango_cairo_context_set_resolution(context.get(), 72); // a unit is a point
    pango_context_set_round_glyph_positions(context.get(), FALSE);
    pango_context_set_language(context.get(),
                               pango_language_from_string("ja")); // not Chinese forms
    const Owned<PangoFontDescription, pango_font_description_free> any(
        pango_font_description_from_string(families));
    const Owned<PangoFont, g_object_unref> font(
        pango_font_map_load_font(fonts, context.get(), any.get()));
    if (!font) throw std::runtime_error("this machine has no fonts");
    return context;
}

void draw_outline(cairo_t *cairo, const Style &style, const Box &box) {
    const double side = style.size * outline_part;
    constexpr std::array dots{1.0, 1.5};
    cairo_save(cairo);
    cairo_set_dash(cairo, dots.data(), dots.size(), 0);
    cairo_rectangle(cairo, box.left + (box.width - side) / 2, box.top + (box.height - side) / 2,
                    side, side);
    take(cairo, faint_colour);
    cairo_stroke(cairo);
    cairo_restore(cairo);
}

} // namespace

void take(cairo_t *cairo, const Colour &colour) {
    cairo_set_source_rgb(cairo, colour.red, colour.green, colour.blue);
}

Typesetter::Typesetter()
    : context_(context_for_paper()), layout_(pango_layout_new(context_.get())) {}

/** Makes the layout as narrow as it gets without a line more. */
void Typesetter::balance() {
    constexpr int steps = 12;
    PangoLayout *const layout = layout_.get();
    const int lines = pango_layout_get_line_count(layout), widest = pango_layout_get_width(layout);
    if (lines < 2 || pango_layout_is_ellipsized(layout)) return;
    for (int step = 1; step < steps; ++step) {
        pango_layout_set_width(layout, widest - widest * step / (2 * steps));
        if (pango_layout_get_line_count(layout) > lines || pango_layout_is_ellipsized(layout)) {
            pango_layout_set_width(layout, widest - widest * (step - 1) / (2 * steps));
            return;
        }
    }
}

/** @param width  0 for one line, however long */
void Typesetter::set(const std::string &faint, const std::string &text, const Style &style,
                     double width) {
    const Owned<PangoFontDescription, pango_font_description_free> font(
        pango_font_description_new());
    pango_font_description_set_family_static(font.get(), families);
    pango_font_description_set_absolute_size(font.get(), style.size * PANGO_SCALE);
    const Owned<PangoAttrList, pango_attr_list_unref> attributes(pango_attr_list_new());
    const auto prefix = static_cast<guint>(faint.size());
    if (style.bold) {
        PangoAttribute *const bold = pango_attr_weight_new(PANGO_WEIGHT_BOLD);
        bold->start_index = prefix;
        pango_attr_list_insert(attributes.get(), bold);
    }
    if (!faint.empty()) {
        const auto part = [](double value) { return static_cast<guint16>(value * 65535); };
        PangoAttribute *const colour = pango_attr_foreground_new(
            part(faint_colour.red), part(faint_colour.green), part(faint_colour.blue));
        colour->end_index = prefix;
        pango_attr_list_insert(attributes.get(), colour);
    }
    PangoLayout *const layout = layout_.get();
    const std::string all = faint + text;
    pango_layout_set_text(layout, all.c_str(), static_cast<int>(all.size()));
    pango_layout_set_font_description(layout, font.get());
    pango_layout_set_attributes(layout, attributes.get());
    pango_layout_set_alignment(layout, style.alignment);
    pango_layout_set_width(layout, width > 0 ? units(width) : -1);
    pango_layout_set_wrap(layout, PANGO_WRAP_WORD_CHAR);
    pango_layout_set_height(layout, -style.most_lines);
    pango_layout_set_ellipsize(layout,
                               style.most_lines > 0 ? PANGO_ELLIPSIZE_END : PANGO_ELLIPSIZE_NONE);
    if (style.balanced) balance();
}

double Typesetter::height(const std::string &text, const Style &style, double width) {
    return height({}, text, style, width);
}

double Typesetter::height(const std::string &faint, const std::string &text, const Style &style,
                          double width) {
    set(faint, text, style, width);
    int size = 0;
    pango_layout_get_size(layout_.get(), nullptr, &size);
    return points(size);
}

void Typesetter::draw(cairo_t *cairo, const std::string &text, const Style &style, double left,
                      double top, double width) {
    draw(cairo, {}, text, style, left, top, width);
}

void Typesetter::draw(cairo_t *cairo, const std::string &faint, const std::string &text,
                      const Style &style, double left, double top, double width) {
    set(faint, text, style, width);
    take(cairo, style.colour);
    const int set_width = pango_layout_get_width(layout_.get()); // less when it is balanced
    const double aside = width > 0 ? (width - points(set_width)) / 2 : 0;
    cairo_move_to(cairo, left + aside, top);
    pango_cairo_show_layout(cairo, layout_.get());
}

void Typesetter::draw_pair(cairo_t *cairo, const std::string &left, const std::string &right,
                           const Style &style, const Box &box) {
    const auto width_of = [&](const std::string &text, const Style &set_in) {
        set({}, text, set_in, 0);
        int width = 0;
        pango_layout_get_size(layout_.get(), &width, nullptr);
        return points(width);
    };
    Style fitting = style;
    const double needed = width_of(left, style) + pair_gap + width_of(right, style);
    if (needed > box.width) fitting.size *= box.width / needed;
    const double top = box.top + (box.height - height(left, fitting, 0)) / 2;
    draw(cairo, left, fitting, box.left, top, 0);
    draw(cairo, right, fitting, box.left + box.width - width_of(right, fitting), top, 0);
}

bool Typesetter::draw_symbol(cairo_t *cairo, const std::string &symbol, const Style &style,
                             const Box &box) {
    PangoLayout *const layout = layout_.get();
    set({}, symbol, style, 0);
    if (pango_layout_get_unknown_glyphs_count(layout) > 0) return false;
    PangoRectangle ink, logical;
    pango_layout_get_extents(layout, &ink, &logical);
    if (ink.width == 0 || ink.height == 0) draw_outline(cairo, style, box);
    // Fonts differ in the room above and below: a line of characters has its middle there.
    const double middle = points(pango_layout_get_baseline(layout)) - style.size * 0.38;
    const double most =
        std::max({points(ink.width) / box.width, points(ink.height) / box.height, 1.0});
    double left = -points(logical.x) - points(logical.width) / 2;
    // What is drawn outside of its own place may not fit by it.
    const double ink_left = left + points(ink.x), ink_right = ink_left + points(ink.width);
    if (ink_left / most < -box.width / 2 || ink_right / most > box.width / 2) {
        left -= (ink_left + ink_right) / 2;
    }
    double top = -middle;
    const double ink_top = top + points(ink.y), ink_bottom = ink_top + points(ink.height);
    if (ink_top / most < -box.height / 2 || ink_bottom / most > box.height / 2) {
        top -= (ink_top + ink_bottom) / 2;
    }
    cairo_save(cairo);
    cairo_translate(cairo, box.left + box.width / 2, box.top + box.height / 2);
    cairo_scale(cairo, 1 / most, 1 / most);
    cairo_move_to(cairo, left, top);
    take(cairo, style.colour);
    pango_cairo_show_layout(cairo, layout);
    cairo_restore(cairo);
    return true;
}

} // namespace chart
