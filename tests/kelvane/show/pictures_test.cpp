// Models as pictures, and two states of them side by side.
#include "kelvane/program_fixture.h"
#include "support/foreign_program.h"
#include "text/pieces.h"

namespace test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

std::string plate(int boreAt) {
  return R"({"format": 1, "solid": {"primitives": [{"type": "box", "size": [80, 40, 10]},
      {"type": "hole", "diameter": 12, "placement": {"position": [)" +
         std::to_string(boreAt) + R"(, 20, 0]}}]}})";
}
std::string plan(const std::string& note) {
  return R"({"format": 1, "sheets": [{"size": "A4"}, {"size": "A4", "portrait": true}],
      "drafts": [{"sheet": 1, "lines": [[10, 10, 60, 10]]}],
      "notes": [{"id": 1, "position": {"x": 40, "y": 50}, "lines": [")" +
         note + R"("]}, {"id": 2, "position": {"x": 40, "y": 90}, "lines": ["it stays"]}]})";
}

class Pictures : public ProgramTest {
 protected:
  Pictures() {
    file("models/plate.prt.1", plate(20));
    file("models/plan.drw.1", plan("first"));
    file("models/bare.prt.1", R"({"format": 1})");
  }
  [[nodiscard]] Ended show(const std::string& model, std::vector<std::string> more) const {
    more.insert(more.begin(), {"show", models(), model});
    return kelvane(more);
  }
  static std::string sizeOf(const std::string& picture) {
    return said("identify -format '%m %wx%h' '" + picture + "' 2>&1");
  }
  // How much more red than green there is, in thousandths of all there could be.
  static double redness(const std::string& picture) {
    return std::stod(said("convert '" + picture + "' -format '%[fx:1000*(mean.r-mean.g)]' info:"));
  }
};

TEST_F(Pictures, AreFittedToTheirSize) {
  const std::string png = path("a.png");
  const std::tuple<const char*, std::vector<std::string>, const char*> cases[] = {
      {"PLATE.PRT", {}, "PNG 1600x1200"},
      {"PLATE.PRT", {"--size", "300x500"}, "PNG 300x500"},
      // A sheet of 297 by 210; both below one another, with 10 mm around them: 317 by 537.
      {"PLAN.DRW", {"--size", "594x900", "--sheet", "1"}, "PNG 594x420"},
      {"PLAN.DRW", {"--size", "2000x537"}, "PNG 317x537"},
  };
  for (auto [model, more, expected] : cases) {
    more.insert(more.end(), {"--png", png});
    EXPECT_EQ(png + "\n", show(model, more).out) << model;
    EXPECT_EQ(expected, sizeOf(png)) << model;
    EXPECT_GT(std::stod(said("convert '" + png + "' -format '%[fx:standard_deviation]' info:")), 0.005)
        << "it is empty";
  }
  const Ended out = show("PLATE.PRT", {"--png", "-", "--size", "40x30"});
  file("b.png", out.out);
  EXPECT_EQ("PNG 40x30", sizeOf(path("b.png"))) << "on standard output, byte by byte";
}

TEST_F(Pictures, ShowTheVisibleEdgesOfASolid) {
  const std::string svg = show("PLATE.PRT", {"--svg", "-"}).out;
  EXPECT_THAT(svg, AllOf(HasSubstr("<svg "), HasSubstr("max-width:100%"), HasSubstr("<path "), HasSubstr("<line "),
                         Not(HasSubstr("stroke-dasharray"))));
}

TEST_F(Pictures, SayWhyThereIsNone) {
  const std::string png = path("no.png");
  const std::pair<std::vector<std::string>, const char*> cases[] = {
      {{"BARE.PRT", "--png", png}, "kelvane: BARE.PRT has nothing to show\n"},
      {{"BARE.PRT", "--svg", png}, "kelvane: BARE.PRT has nothing to show\n"},
      {{"PLATE.PRT", "--png", png, "--sheet", "1"}, "kelvane: PLATE.PRT has no sheets\n"},
      {{"PLAN.DRW", "--png", png, "--sheet", "3"}, "kelvane: PLAN.DRW has no sheet 3\n"},
      {{"PLAN.DRW", "--png", png, "--size", "20000x10"},
       "kelvane: '20000x10' is no size of a picture; one is 1600x1200, and sides have at most 10000 dots\n"},
      {{"PLAN.DRW", "--sheet", "1"}, "kelvane: --sheet and --size go with --svg or --png\n"},
  };
  for (const auto& [words, line] : cases) {
    const Ended ended = show(words[0], {words.begin() + 1, words.end()});
    EXPECT_EQ(2, ended.code) << line;
    EXPECT_THAT(ended.err, testing::EndsWith(line));
    EXPECT_FALSE(std::filesystem::exists(png)) << line;
  }
}

TEST_F(Pictures, OfTwoStatesMarkWhatChanged) {
  file("after/plate.prt.2", plate(60));
  file("after/plan.drw.2", plan("second"));
  file("after/bare.prt.2", R"({"format": 1, "parameters": [{"name": "A", "type": "integer", "value": 1}]})");
  file("after/über.prt.1", plate(40));
  const Ended ended = kelvane({"diff", models(), path("after"), "--stat", "--pictures", path("pictures")});
  EXPECT_EQ(1, ended.code);
  EXPECT_THAT(ended.err, AllOf(testing::StartsWith("BARE.PRT has nothing to show\n"),
                               HasSubstr("pictures  " + path("pictures") + "/index.html\n")));
  const auto read = [&](const char* name) { return readBytes(path("pictures/") + name); };
  EXPECT_THAT(read("index.html"), AllOf(HasSubstr("PLAN.DRW.before.svg"), HasSubstr("PLATE.PRT.after.png"),
                                        HasSubstr("BARE.PRT has nothing"), HasSubstr("src=\"%C3%9CBER.PRT.after.png\""),
                                        HasSubstr("it isn't there"), HasSubstr("<del>first</del> <ins>second</ins>")));
  // Of the sheets the changed note alone is coloured, with a bar behind it.
  const std::string before = read("PLAN.DRW.before.svg"), after = read("PLAN.DRW.after.svg");
  EXPECT_THAT(before, AllOf(HasSubstr("fill=\"#c00020\">first<"), HasSubstr("stroke=\"#ffd5da\""),
                            HasSubstr("\">it stays<"), HasSubstr("stroke=\"#000\"")));
  EXPECT_THAT(after,
              AllOf(HasSubstr("fill=\"#00783a\">second<"), HasSubstr("stroke=\"#c9f2d6\""), Not(HasSubstr("#c00020"))));
  EXPECT_EQ(before.find("fill=\"#c00020\""), before.rfind("fill=\"#c00020\""));
  EXPECT_GT(redness(path("pictures/PLATE.PRT.before.png")), 5);
  EXPECT_LT(redness(path("pictures/PLATE.PRT.after.png")), -5);
}

// An assembly whose pin moved: the plate, of the same body, stays as it was.
TEST_F(Pictures, OfAssembliesMarkThePartThatMoved) {
  const auto assembly = [](int pinAt) {
    return R"({"format": 1, "components": [{"name": "PLATE", "type": "prt", "feature": 5},
        {"name": "PIN", "type": "prt", "feature": 6, "placement": {"position": [)" +
           std::to_string(pinAt) + ", 0, 60]}}]}";
  };
  const std::string pin = R"({"format": 1, "solid": {"primitives": [{"type": "box", "size": [4, 4, 4]}]}})";
  for (const std::string folder : {"models", "after"}) {
    file(folder + "/plate.prt.1", plate(20));
    file(folder + "/pin.prt.1", pin);
    file(folder + "/unit.asm.1", assembly(folder == "after" ? 30 : 0));
  }
  file("after/plan.drw.1", plan("first"));
  file("after/bare.prt.1", R"({"format": 1})");
  EXPECT_THAT(kelvane({"diff", models(), path("after"), "--pictures", path("pictures")}).out, HasSubstr("UNIT.ASM"));
  const double before = redness(path("pictures/UNIT.ASM.before.png")),
               after = redness(path("pictures/UNIT.ASM.after.png"));
  EXPECT_GT(before - after, 0.2) << "the pin is marked";
  EXPECT_LT(before - after, 20) << "the plate isn't";
}

// A pin beside the plate, which a layer or a style blanks, is no more seen than one that isn't there; an exploded one
// stands elsewhere.
TEST_F(Pictures, ObeyTheLayersStylesAndExplodedStates) {
  const auto svgOf = [this](const std::string& pin, const std::string& states) {
    file("models/unit.asm.1",
         R"({"format": 1, "components": [{"name": "PLATE", "type": "prt", "feature": 5})" + pin + "]" + states + "}");
    return show("UNIT.ASM", {"--svg", "-"}).out;
  };
  file("models/pin.prt.1", plate(40));
  const auto pinAt = [](const char* z) {
    return std::string(R"(, {"name": "PIN", "type": "prt", "feature": 6, "placement": {"position": [0, 0, )") + z +
           "]}}";
  };
  const std::string whole = svgOf(pinAt("60"), ""), alone = svgOf("", "");
  ASSERT_NE(whole, alone);
  const std::string layer = R"(, "layers": [{"id": 1, "name": "L", "status": "STATUS",
      "items": [{"type": "feature", "id": 6}]}])";
  for (const auto& [status, expected] : {std::pair("blank", alone), {"hidden", alone}, {"normal", whole}})
    EXPECT_EQ(expected, svgOf(pinAt("60"), text::replaceAll(layer, "STATUS", status))) << status;
  const std::string style = R"(, "styleStates": [{"id": 1, "name": "S", "items": [{"feature": 6, "blanked": true}]}])";
  EXPECT_EQ(whole, svgOf(pinAt("60"), style)) << "it isn't active";
  EXPECT_EQ(alone, svgOf(pinAt("60"), style + R"(, "activeStyleState": "S")"));
  EXPECT_EQ(svgOf(pinAt("90"), ""), svgOf(pinAt("60"), R"(, "explodedStates": [{"id": 1, "name": "E",
      "items": [{"feature": 6, "move": [0, 0, 30]}]}], "activeExplodedState": "E")"));
}

}  // namespace
}  // namespace test
