#include "kelvane/show/svg.h"

#include <cmath>

#include "kelvane/base/xml_text.h"
#include "text/encoding.h"
#include "text/numbers.h"

namespace kelvane {

std::string svgNumber(double value) {
  if (!std::isfinite(value)) return "0";
  const double rounded = std::round(value * 1e4) / 1e4;
  return text::toUtf8(text::shortest(rounded == 0 ? 0.0 : rounded));
}

namespace {

std::string attribute(std::string_view name, double value) {
  return " " + std::string(name) + "=\"" + svgNumber(value) + "\"";
}

std::string pen(double width, std::string_view color, std::string_view more) {
  return attribute("stroke-width", width) + " stroke=\"" + std::string(color) + "\"" + (more.empty() ? "" : " ") +
         std::string(more);
}

}  // namespace

Svg::Svg(double width, double height, std::string_view unit) {
  out_ = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + svgNumber(width) + std::string(unit) + "\" height=\"" +
         svgNumber(height) + std::string(unit) + "\" viewBox=\"0 0 " + svgNumber(width) + " " + svgNumber(height) +
         "\" style=\"max-width:100%;max-height:100vh\" font-family=\"Helvetica, Arial, Liberation Sans, FreeSans, "
         "sans-serif\">\n";
}

void Svg::rectangle(double x, double y, double width, double height, std::string_view style) {
  out_ += "<rect" + attribute("x", x) + attribute("y", y) + attribute("width", width) + attribute("height", height) +
          " " + std::string(style) + "/>\n";
}

void Svg::line(double x1, double y1, double x2, double y2, double width, std::string_view color,
               std::string_view more) {
  out_ += "<line" + attribute("x1", x1) + attribute("y1", y1) + attribute("x2", x2) + attribute("y2", y2) +
          pen(width, color, more) + "/>\n";
}

void Svg::path(std::string_view data, double width, std::string_view color, std::string_view more) {
  out_ += "<path d=\"" + std::string(data) + "\" fill=\"none\"" + pen(width, color, more) + "/>\n";
}

void Svg::area(std::string_view data, std::string_view color) {
  out_ += "<path d=\"" + std::string(data) + "\" fill=\"" + std::string(color) + "\"/>\n";
}

void Svg::circle(double x, double y, double radius, double width, std::string_view color, std::string_view more) {
  out_ += "<circle" + attribute("cx", x) + attribute("cy", y) + attribute("r", radius) + " fill=\"none\"" +
          pen(width, color, more) + "/>\n";
}

void Svg::text(double x, double y, double height, std::string_view text, std::string_view style, double angle) {
  out_ += "<text" + attribute("x", x) + attribute("y", y) + attribute("font-size", height);
  if (angle != 0) out_ += " transform=\"rotate(" + svgNumber(-angle) + " " + svgNumber(x) + " " + svgNumber(y) + ")\"";
  if (!style.empty()) out_ += " " + std::string(style);
  out_ += ">" + escaped(text) + "</text>\n";
}

}  // namespace kelvane
