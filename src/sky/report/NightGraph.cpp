#include "sky/report/NightGraph.h"

#include "common/graph_scale.h"
#include "common/numbers.h"
#include "common/text.h"
#include "sky/report/Integration.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace tarn {

namespace {

constexpr double kLeft = 56;
constexpr double kRight = 10;
constexpr double kStrip = 66;   // height of one
constexpr double kBetween = 24; // with its title
constexpr double kFoot = 34;    // with the times
constexpr double kDot = 2.2;
constexpr double kHour = 3600;

double TextNumber(const std::string& text) {
    return ParseNumber(text).value_or(kNotMeasured);
}

struct Strip {
    const char* title;
    double least; // that it spans: less is noise
    double (*value)(const ReportFrame& frame);
};
constexpr Strip kStrips[] = {
    {"HFR, pixels", 0.4,
     [](const ReportFrame& f) { return f.measures ? f.measures->hfr : kNotMeasured; }},
    {"Eccentricity", 0.2,
     [](const ReportFrame& f) { return f.measures ? f.measures->eccentricity : kNotMeasured; }},
    {"Sky background, values of the file", 10,
     [](const ReportFrame& f) { return f.measures ? f.measures->background : kNotMeasured; }},
    {"Transparency", 0.2, [](const ReportFrame& f) { return f.transparency; }},
    {"Sensor temperature, °C", 2,
     [](const ReportFrame& f) { return TextNumber(f.header.temperature); }},
    {"Focuser, steps", 10, [](const ReportFrame& f) { return TextNumber(f.header.focus); }},
};

std::string At(double value) {
    return FormatFixed(value, 1);
}

std::string Line(const char* kind, double x, double y, double toX, double toY) {
    return std::string("<line class=\"") + kind + "\" x1=\"" + At(x) + "\" y1=\"" + At(y) +
           "\" x2=\"" + At(toX) + "\" y2=\"" + At(toY) + "\"/>";
}

std::string TextAt(const char* kind, double x, double y, const char* anchor,
                   std::string_view text) {
    return std::string("<text class=\"") + kind + "\" x=\"" + At(x) + "\" y=\"" + At(y) +
           "\" text-anchor=\"" + anchor + "\">" + Escaped(text) + "</text>";
}

class GraphMaker {
public:
    GraphMaker(std::span<const ReportFrame> frames, const ReportNight& night)
        : m_frames(frames), m_night(night) {
        for (const std::size_t index : night.frames)
            if (frames[index].header.kind == FrameKind::Light) m_lights.push_back(index);
        for (const std::size_t index : m_lights) FilterOf(frames[index]);
        if (m_lights.empty()) return;
        constexpr double kLeast = kHour; // that a graph spans
        const double first = m_frames[m_lights.front()].sky.utc.value_or(0);
        const double last = m_frames[m_lights.back()].sky.utc.value_or(0);
        const double air = std::max(0.03 * (last - first), (kLeast - (last - first)) / 2);
        m_time = {first - air, last + air};
    }

    std::string Make() {
        if (m_lights.empty()) return {};
        Legend();
        for (const Strip& strip : kStrips) Draw(strip);
        if (m_night.site) DrawAltitudes();
        for (const GraphTick& tick : TimeTicks(m_time, 12))
            m_body += TextAt("t", XOf(tick.value), m_y + 14, "middle", tick.label);
        m_body += TextAt("t", kGraphWidth - kRight, m_y + 28, "end", "UTC");
        m_y += kFoot;
        return m_body;
    }

    double Height() const { return m_y; }

private:
    double XOf(double time) const {
        return kLeft + m_time.PartOf(time) * (kGraphWidth - kLeft - kRight);
    }
    double YOf(const GraphRange& range, double value) const {
        return m_y + kStrip * (1 - std::clamp(range.PartOf(value), 0.0, 1.0));
    }

    // Its number among the filters, by which it is coloured.
    std::size_t FilterOf(const ReportFrame& frame) {
        const auto found =
            std::find_if(m_filters.begin(), m_filters.end(), [&](const std::string& known) {
                return NameKey(known) == NameKey(frame.header.filter);
            });
        const auto index = std::size_t(found - m_filters.begin());
        if (found == m_filters.end()) m_filters.push_back(frame.header.filter);
        return index % std::tuple_size_v<decltype(GraphColors::series)>;
    }

    void Legend() {
        if (m_filters.size() == 1 && m_filters.front().empty()) return;
        constexpr double kLetter = 7; // about
        double x = kLeft;
        for (std::size_t i = 0; i < m_filters.size(); ++i) {
            const std::string name = m_filters[i].empty() ? "no filter" : m_filters[i];
            m_body += Dot(x + 4, m_y + 6, i % std::tuple_size_v<decltype(GraphColors::series)>);
            m_body += TextAt("t", x + 12, m_y + 10, "start", name);
            x += 30 + kLetter * Length(name);
        }
        m_y += 18;
    }

    static std::string Dot(double x, double y, std::size_t filter) {
        return "<circle class=\"s" + std::to_string(filter) + "\" cx=\"" + At(x) + "\" cy=\"" +
               At(y) + "\" r=\"" + FormatFixed(kDot, 1) + "\"/>";
    }

    void Frame(const char* title, const GraphRange& range, const std::vector<GraphTick>& ticks) {
        m_y += kBetween;
        m_body += TextAt("h", kLeft, m_y - 7, "start", title);
        for (const GraphTick& tick : ticks) {
            const double y = YOf(range, tick.value);
            m_body += Line("g", kLeft, y, kGraphWidth - kRight, y);
            m_body += TextAt("t", kLeft - 6, y + 4, "end", tick.label);
        }
        for (const GraphTick& tick : TimeTicks(m_time, 12))
            m_body += Line("g", XOf(tick.value), m_y, XOf(tick.value), m_y + kStrip);
    }

    void Draw(const Strip& strip) {
        std::vector<double> values;
        for (const std::size_t index : m_lights) values.push_back(strip.value(m_frames[index]));
        if (std::none_of(values.begin(), values.end(), [](double v) { return std::isfinite(v); }))
            return;
        GraphRange range = RobustRange(values);
        if (const double lack = strip.least - (range.high - range.low); lack > 0)
            range = {range.low - lack / 2, range.high + lack / 2};
        if (std::none_of(values.begin(), values.end(), [](double value) { return value < 0; }))
            range.low = std::max(range.low, 0.0);
        Frame(strip.title, range, RoundTicks(range, 4));
        for (std::size_t i = 0; i < values.size(); ++i) {
            const ReportFrame& frame = m_frames[m_lights[i]];
            if (!std::isfinite(values[i])) continue;
            const bool rejected = frame.mark.decision == Decision::Reject;
            const double x = XOf(frame.sky.utc.value_or(0));
            const double y = YOf(range, values[i]);
            m_body += rejected ? Cross(x, y) : Dot(x, y, FilterOf(frame));
        }
        m_y += kStrip;
    }

    static std::string Cross(double x, double y) {
        return Line("x", x - kDot, y - kDot, x + kDot, y + kDot) +
               Line("x", x - kDot, y + kDot, x + kDot, y - kDot);
    }

    void DrawAltitudes() {
        const GraphRange range{0, 90};
        m_y += kBetween;
        DrawTwilight();
        m_y -= kBetween;
        Frame("Altitude, degrees: targets, Moon (dashed); twilight behind", range,
              {{0, "0"}, {30, "30"}, {60, "60"}, {90, "90"}});
        Curve("m", [](const SunAndMoon& seen, const Heavens&) { return seen.moon.altitude; });
        std::vector<std::string> drawn;
        for (const std::size_t index : m_lights) {
            const ReportFrame& frame = m_frames[index];
            if (!frame.header.where.target ||
                std::find(drawn.begin(), drawn.end(), NameKey(frame.header.object)) != drawn.end())
                continue;
            drawn.push_back(NameKey(frame.header.object));
            const Target target = *frame.header.where.target;
            Curve("a", [target](const SunAndMoon&, const Heavens& heavens) {
                return heavens.Of(target).altitude;
            });
        }
        for (const std::size_t index : m_lights) {
            const ReportFrame& frame = m_frames[index];
            if (frame.sky.altitude >= 0)
                m_body += Dot(XOf(frame.sky.utc.value_or(0)), YOf(range, frame.sky.altitude),
                              FilterOf(frame));
        }
        m_y += kStrip;
    }

    // A line above the horizon.
    void Curve(const char* kind,
               const std::function<double(const SunAndMoon&, const Heavens&)>& altitude) {
        constexpr int kPoints = 96;
        const GraphRange range{0, 90};
        Heavens heavens;
        std::string points;
        const auto end = [&] {
            if (!points.empty())
                m_body +=
                    std::string("<polyline class=\"") + kind + "\" points=\"" + points + "\"/>";
            points.clear();
        };
        for (int i = 0; i <= kPoints; ++i) {
            const double time = m_time.ValueAt(double(i) / kPoints);
            const SunAndMoon seen = heavens.At(time, *m_night.site);
            const double degrees = altitude(seen, heavens);
            if (degrees < 0) {
                end();
                continue;
            }
            if (!points.empty()) points += ' ';
            points += At(XOf(time)) + "," + At(YOf(range, degrees));
        }
        end();
    }

    void DrawTwilight() {
        constexpr int kParts = 240;
        Heavens heavens;
        std::optional<Twilight> kind;
        double from = m_time.low;
        const auto end = [&](double to) {
            if (kind && *kind != Twilight::Night) {
                const std::string name =
                    *kind == Twilight::Day ? "day" : "w" + std::to_string(int(*kind));
                m_body += "<rect class=\"" + name + "\" x=\"" + At(XOf(from)) + "\" y=\"" +
                          At(m_y) + "\" width=\"" + At(XOf(to) - XOf(from)) + "\" height=\"" +
                          At(kStrip) + "\"/>";
            }
            from = to;
        };
        for (int i = 0; i <= kParts; ++i) {
            const double time = m_time.ValueAt(double(i) / kParts);
            const Twilight now = TwilightOf(heavens.At(time, *m_night.site).sun.altitude);
            if (kind != now) end(time);
            kind = now;
        }
        end(m_time.high);
    }

    std::span<const ReportFrame> m_frames;
    const ReportNight& m_night;
    std::vector<std::size_t> m_lights;
    std::vector<std::string> m_filters;
    GraphRange m_time;
    std::string m_body;
    double m_y = 4; // where the next strip begins
};

std::string Element(const std::string& body, double height, const std::string& attributes,
                    const std::string& style) {
    return "<svg viewBox=\"0 0 " + At(kGraphWidth) + " " + At(height) + "\"" + attributes + ">" +
           style + body + "</svg>";
}

} // namespace

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char sign : text) switch (sign) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        case '\'':
            escaped += "&#39;";
            break;
        default:
            escaped += sign;
        }
    return escaped;
}

std::string GraphStyle(const GraphColors& colors) {
    std::string style =
        ".h{fill:" + colors.ink + ";font:12px sans-serif}.t{fill:" + colors.quiet +
        ";font:11px sans-serif}.g{stroke:" + colors.grid +
        ";stroke-width:1}.x{stroke:" + colors.quiet +
        ";stroke-width:1.2}.m{fill:none;stroke:" + colors.moon +
        ";stroke-width:1.5;stroke-dasharray:5,3}.a{fill:none;stroke:" + colors.quiet +
        ";stroke-width:1}.day{fill:" + colors.day + "}";
    constexpr const char* kOpacities[] = {"0.75", "0.5", "0.25"};
    for (int i = 0; i < 3; ++i)
        style += ".w" + std::to_string(i + 1) + "{fill:" + colors.twilight +
                 ";fill-opacity:" + kOpacities[i] + "}";
    for (std::size_t i = 0; i < colors.series.size(); ++i)
        style += ".s" + std::to_string(i) + "{fill:" + colors.series[i] + "}";
    return style;
}

std::string NightGraph(std::span<const ReportFrame> frames, const ReportNight& night) {
    GraphMaker maker(frames, night);
    const std::string body = maker.Make();
    return body.empty() ? body
                        : Element(body, maker.Height(),
                                  " role=\"img\" aria-label=\"Measures of the night " +
                                      Escaped(night.date) + "\"",
                                  {});
}

std::string NightGraphFile(std::span<const ReportFrame> frames, const ReportNight& night,
                           const GraphColors& colors, double& height) {
    GraphMaker maker(frames, night);
    const std::string body = maker.Make();
    height = maker.Height();
    return body.empty() ? body
                        : Element(body, height, " xmlns=\"http://www.w3.org/2000/svg\"",
                                  "<style>" + GraphStyle(colors) + "</style>");
}

} // namespace tarn
