#include "catalogue/Plot.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

#include "catalogue/Sheet.h"

namespace App::Catalogue {
namespace {

// In the units of the drawing, which scales to the page.
constexpr double kWidth = 720;
constexpr double kHeight = 360;
constexpr double kLeft = 92;
constexpr double kRight = 190;  ///< the lines' names stand here
constexpr double kTop = 16;
constexpr double kBottom = 64;
constexpr double kLine = 16;  ///< of text

std::string Number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1f", value);
    return text;
}

Markup Label(double x, double y, const char* anchor, const std::string& text) {
    return Element("text", {{"x", Number(x)}, {"y", Number(y)}, {"text-anchor", anchor}}, text);
}

Markup Rule(double x1, double y1, double x2, double y2, const char* kind) {
    return Element(
        "line", {{"class", kind}, {"x1", Number(x1)}, {"y1", Number(y1)}, {"x2", Number(x2)}, {"y2", Number(y2)}}, {});
}

/// The scale of bitrates, logarithmic: twice as much is the same step everywhere.
class Scale {
public:
    explicit Scale(const Curve::Block& block) {
        for (const Curve::Series& series : block.series) {
            for (const auto& bitrate : series.bitrates) {
                if (!bitrate || *bitrate <= 0) continue;
                low_ = std::min(low_, std::log10(static_cast<double>(*bitrate)));
                high_ = std::max(high_, std::log10(static_cast<double>(*bitrate)));
            }
        }
        constexpr double kMargin = 0.06;
        low_ -= kMargin;
        high_ += kMargin;
    }

    double At(int64_t bitrate) const {
        const double part = (std::log10(static_cast<double>(bitrate)) - low_) / (high_ - low_);
        return kHeight - kBottom - part * (kHeight - kBottom - kTop);
    }

    /// 1, 2 and 5 of every power of ten that is in it; on a long scale the powers alone.
    std::vector<int64_t> Ticks() const {
        std::vector<int64_t> ticks;
        const bool isLong = high_ - low_ > 2.2;
        for (int power = static_cast<int>(std::floor(low_)); power <= high_; ++power) {
            for (const int digit : {1, 2, 5}) {
                const double value = digit * std::pow(10.0, power);
                const double place = std::log10(value);
                if (place >= low_ && place <= high_ && (digit == 1 || !isLong)) ticks.push_back(std::llround(value));
            }
        }
        return ticks;
    }

private:
    double low_ = std::numeric_limits<double>::infinity();
    double high_ = -std::numeric_limits<double>::infinity();
};

double PlaceOf(std::size_t point, std::size_t count) {
    constexpr double kRoom = kWidth - kLeft - kRight;
    if (count < 2) return kLeft + kRoom / 2;
    constexpr double kInset = 24;
    return kLeft + kInset + (kRoom - 2 * kInset) * static_cast<double>(point) / static_cast<double>(count - 1);
}

Markup DrawLine(const Curve::Series& series, const Scale& scale) {
    Markup drawn;
    std::string path;
    for (std::size_t i = 0; i < series.bitrates.size(); ++i) {
        if (!series.bitrates[i]) continue;
        const double x = PlaceOf(i, series.bitrates.size());
        const double y = scale.At(*series.bitrates[i]);
        path += (path.empty() || !series.bitrates[i - 1] ? "M" : "L") + Number(x) + " " + Number(y);
        drawn += Element("circle", {{"cx", Number(x)}, {"cy", Number(y)}, {"r", "3"}}, {});
    }
    return Element("path", {{"d", path}}, {}) + drawn;
}

/// The lines' names at their ends, moved apart where they would cover each other.
Markup NameLines(const Curve::Block& block, const Scale& scale) {
    struct Name {
        double y;
        std::string text;
    };
    std::vector<Name> names;
    for (const Curve::Series& series : block.series) {
        const auto last = std::ranges::find_if(series.bitrates.rbegin(), series.bitrates.rend(),
                                               [](const auto& bitrate) { return bitrate.has_value(); });
        names.push_back({scale.At(**last) + 4, series.Title()});
    }
    std::ranges::sort(names, {}, &Name::y);
    for (std::size_t i = 1; i < names.size(); ++i) names[i].y = std::max(names[i].y, names[i - 1].y + kLine);
    const double lowest = kHeight - kBottom + 4;
    for (std::size_t i = names.size(); i-- > 0;) {
        names[i].y = std::min(names[i].y, lowest - kLine * static_cast<double>(names.size() - 1 - i));
    }
    Markup drawn;
    for (const Name& name : names) drawn += Label(kWidth - kRight + 8, name.y, "start", name.text);
    return drawn;
}

Markup Draw(const Curve& curve, const std::string& codec) {
    const Curve::Block& block = curve.blocks.front();
    const Scale scale(block);
    Markup drawn = Element("title", "Bitrates of " + codec) +
                   Element("desc", "Lines of bitrate by " + curve.pointsAre + "; the tables below have the numbers.");
    Markup grid;
    for (const int64_t tick : scale.Ticks()) {
        const double y = scale.At(tick);
        grid += Rule(kLeft, y, kWidth - kRight, y, "grid") + Label(kLeft - 8, y + 4, "end", BitrateText(tick));
    }
    // Names that would run into each other stand on two levels.
    for (std::size_t i = 0; i < block.points.size(); ++i) {
        const double x = PlaceOf(i, block.points.size());
        const bool isLower = block.points.size() > 5 && i % 2 == 1;
        grid += Rule(x, kHeight - kBottom, x, kHeight - kBottom + (isLower ? 5 + kLine : 5), "axis") +
                Label(x, kHeight - kBottom + (isLower ? 2 : 1) * kLine + 4, "middle", block.points[i]);
    }
    const std::string at = block.name.empty() ? "" : ", at " + block.name;
    drawn += Element("g", {{"class", "axes"}},
                     grid + Rule(kLeft, kHeight - kBottom, kWidth - kRight, kHeight - kBottom, "axis") +
                         Label((kLeft + kWidth - kRight) / 2, kHeight - 8, "middle", curve.pointsAre + at));
    for (std::size_t i = 0; i < block.series.size(); ++i) {
        drawn += Element("g", {{"class", "line line-" + std::to_string(i % 6)}}, DrawLine(block.series[i], scale));
    }
    drawn += Element("g", {{"class", "names"}}, NameLines(block, scale));
    return Element("svg",
                   {{"viewBox", "0 0 " + Number(kWidth) + " " + Number(kHeight)}, {"role", "img"}, {"class", "plot"}},
                   drawn);
}

Markup Table(const Curve& curve, const Curve::Block& block) {
    std::vector<Column> columns = {curve.pointsAre};
    for (const Curve::Series& series : block.series) columns.emplace_back(series.Title(), true);
    Markup rows;
    for (std::size_t i = 0; i < block.points.size(); ++i) {
        Markup cells = Element("th", {{"scope", "row"}}, block.points[i]);
        for (const Curve::Series& series : block.series) {
            cells += Element("td", {{"class", "number"}},
                             series.bitrates[i] ? BitrateText(*series.bitrates[i]) : std::string("\u2013"));
        }
        rows += Element("tr", cells);
    }
    return ScrollingTable(block.name.empty() ? "Bitrates" : "Bitrates at " + block.name, columns, rows, block.name);
}

/// What is the same at every point.
Markup LevelLines(const Curve& curve) {
    Markup items;
    for (const Curve::Series& series : curve.blocks.front().series) {
        const auto first =
            std::ranges::find_if(series.bitrates, [](const auto& bitrate) { return bitrate.has_value(); });
        items += Element("li", series.Title() + ", " + BitrateText(**first));
    }
    return Element("p", "The " + curve.pointsAre + " does not matter:") + Element("ul", items);
}

}  // namespace

std::string BitrateText(int64_t bitsPerSecond) {
    const bool isMega = bitsPerSecond >= 999'500;
    const double value = static_cast<double>(bitsPerSecond) / (isMega ? 1e6 : 1e3);
    char text[32];
    std::snprintf(text, sizeof text, value < 999.5 ? "%.3g %s" : "%.0f %s", value, isMega ? "Mbit/s" : "kbit/s");
    return text;
}

Markup Plot(const Curve& curve, const std::string& codec) {
    if (curve.IsFlat()) return LevelLines(curve);
    Markup tables;
    for (const Curve::Block& block : curve.blocks) tables += Table(curve, block);
    const Markup drawing =
        Element("div", {{"class", "scroll"}, {"role", "group"}, {"tabindex", "0"}, {"aria-label", "Drawing"}},
                Draw(curve, codec));
    return Element("figure", drawing + Element("details", Element("summary", "The numbers as tables") + tables));
}

}  // namespace App::Catalogue
