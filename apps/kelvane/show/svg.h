// An SVG picture, element by element. Lengths are in the picture's own units; y grows downwards.
#pragma once

#include <string>
#include <string_view>

namespace kelvane {

// The shortest form with at most four decimals.
std::string svgNumber(double value);

class Svg {
 public:
  // unit: "mm" or "in"; what a width of 1 stands for.
  Svg(double width, double height, std::string_view unit);
  // style: attributes as written, such as `stroke="#000"`.
  void rectangle(double x, double y, double width, double height, std::string_view style);
  // The stroke ends square at its points. more: further attributes as written.
  void line(double x1, double y1, double x2, double y2, double width, std::string_view color,
            std::string_view more = {});
  // data: of an outline, in the words of SVG; nothing is filled.
  void path(std::string_view data, double width, std::string_view color, std::string_view more = {});
  // The same filled with the colour, without a stroke.
  void area(std::string_view data, std::string_view color);
  void circle(double x, double y, double radius, double width, std::string_view color, std::string_view more = {});
  // x, y: where the base line begins; angle: in degrees, counter-clockwise.
  void text(double x, double y, double height, std::string_view text, std::string_view style, double angle = 0);
  // The whole picture.
  [[nodiscard]] std::string finished() const { return out_ + "</svg>\n"; }

 private:
  std::string out_;
};

}  // namespace kelvane
