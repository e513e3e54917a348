#include "kelvane/vocabulary/rules.h"

#include <algorithm>

namespace kelvane {
namespace {

using enum Severity;

constexpr Rule kRules[] = {
    {.name = "action-for-no-model",
     .about = "The action works on models, but none of its switches forPRT, forASM and forDRW lets one through that it "
              "works on, so that it never runs.",
     .example = R"(<task type="saveModel" version="3" forEF="false"/>)"},
    {.name = "action-refused",
     .severity = warning,
     .about = "Creo carries the action out on assemblies alone, and the list asks it for parts.",
     .example = R"(<task type="setSimpRep" version="3" forPRT="true" forASM="false" simprepc="0" simprep="LIGHT"/>)"},
    {.name = "action-removed",
     .about = "The action has been taken out of the product; the log says so and nothing else happens.",
     .example = R"(<task type="openXLSReport" version="3"/>)"},
    {.name = "action-unknown",
     .about = "No action has this key. A run writes an error line and goes on.",
     .example = R"(<task type="savModel" version="3" forPRT="true"/>)"},
    {.name = "action-version",
     .about = "The list was written for another form of the action, which isn't carried out then. The log shows its "
              "title alone.",
     .example = R"(<task type="reportUniversal" version="3" forPRT="true"/>)"},
    {.name = "action-without-effect",
     .about = "The key is known and does nothing.",
     .example = R"(<task type="asmFastOpen" version="3"/>)"},
    {.name = "action-without-type",
     .about = "An element among the actions has no 'type', so that it is none.",
     .example = R"(<task version="3"/>)"},
    {.name = "ampersand",
     .severity = note,
     .about = "A '&' that begins no entity stands for itself. Other readers of XML refuse it.",
     .example = R"(message="nuts & bolts")"},
    {.name = "attribute-missing",
     .severity = warning,
     .about = "The action can't do without this attribute; of a list, its entry can't.",
     .example = R"(<task type="renameLayer" version="3" forPRT="true" namef_0="A"/>)"},
    {.name = "attribute-number",
     .severity = warning,
     .about =
         "No attribute of this number is read: it is beyond the last one or behind a gap, or zeros stand before it.",
     .example = R"(name_100="X")"},
    {.name = "attribute-twice",
     .about = "Of two attributes of one name the first counts.",
     .example = R"(name="A" name="B")"},
    {.name = "attribute-unknown",
     .severity = warning,
     .about = "The action reads no attribute of this name; what stands in it has no effect. Programs that write lists "
              "may keep notes of their own in such attributes.",
     .example = R"(<task type="editModelParameter" version="3" forPRT="true" name="A" valeu="1"/>)"},
    {.name = "blank-after-equals",
     .about =
         "Behind a blank after '=' the reader takes the value for a part of the next attribute's name; both are lost.",
     .example = R"(name= "A" value="1")"},
    {.name = "command-value",
     .severity = warning,
     .about = "A value of a model stands in a command line without single quotes, or with those that it brings along. "
              "The command processor reads it like the rest of the line, so that whoever writes the model can start "
              "any program.",
     .example = R"(cmd="mail.cmd" args="-s %TITLE%")"},
    {.name = "comment",
     .about = "The reader knows no comments: one is an element that swallows what follows it.",
     .example = "<!-- not now -->"},
    {.name = "configuration",
     .about = "A line of kvd_main.cfg looks like a key and is none, so that it counts for nothing.",
     .example = "kvd_log_levle=8"},
    {.name = "count-below-list",
     .severity = warning,
     .about = "The attribute that counts a list is smaller than the list: the rest isn't read.",
     .example = R"(count="1" name_0="A" name_1="B")"},
    {.name = "credentials-unproved",
     .severity = warning,
     .about = "User name and password go to a server that may be another one than the list names: unencrypted, or "
              "without a look at its certificate where the configuration lacks kvd_url_verify=1.",
     .example = R"(value="http://plm/odata/" usrcred="true")"},
    {.name = "document-empty", .about = "The file holds no element."},
    {.name = "document-unreadable",
     .about = "The file can't be read at all, for a name or a value that is over its limit."},
    {.name = "element-unknown",
     .about = "An element of this name isn't read here, nor what is in it.",
     .example = R"(<subtasks><action type="saveModel"/></subtasks>)"},
    {.name = "entity-unknown",
     .severity = warning,
     .about = "The reader knows &quot; &gt; &lt; and &amp;; what looks like another entity stays as it stands.",
     .example = R"(message="it&apos;s")"},
    {.name = "filter-as-action",
     .severity = warning,
     .about = "A filter stands among the actions: its answer is dropped.",
     .example = R"(<body><task type="isInstance"/></body>)"},
    {.name = "filter-attribute",
     .about = "An attribute of a filter's item is missing, or has a value that the filter can't use.",
     .example = R"(<item type="filename" filtertype="true"/>)"},
    {.name = "filter-empty",
     .about = "A filter block holds no items where the reader looks for them: every model passes.",
     .example = R"(<filters><item type="isInstance"/></filters>)"},
    {.name = "filter-unasked",
     .severity = warning,
     .about = "An action holds a filter, but lacks 'forEF', so that it works on models whatever the filter says.",
     .example =
         R"(<task type="saveModel" version="3" forPRT="true"><filter><item type="isInstance"/></filter></task>)"},
    {.name = "filter-unknown",
     .about = "No filter has this key. It counts as passed.",
     .example = R"(<item type="isInstanze" filtertype="true"/>)"},
    {.name = "filter-without-filtertype",
     .about = "Without 'filtertype' an item holds where its test fails.",
     .example = R"(<item type="isInstance"/>)"},
    {.name = "filter-without-type",
     .about = "An item of a filter has no 'type', so that it tests nothing.",
     .example = R"(<item filtertype="true"/>)"},
    {.name = "group",
     .about = "A group has no tasks, or a model that it can't work with.",
     .example = R"(<task type="groupActions" version="3" reworkMode="1"/>)"},
    {.name = "member-missing", .about = "The package lacks a file that every package has."},
    {.name = "member-name",
     .about =
         "Windows has no file of this name: it is that of a device, such as CON, NUL or COM1, whatever its ending; a "
         "stream inside another file; it ends in a dot or a blank; or it holds one of <>\"|?*. The package can't be "
         "unpacked whole there."},
    {.name = "member-name-long",
     .severity = warning,
     .about = "The name of a member, with its folders, is so long that it may exceed the 259 characters of a path on "
              "Windows once the folder stands before it that packages are unpacked to."},
    {.name = "member-name-unseen",
     .about =
         "The name of a member holds control characters, marks that turn the direction of writing, or letters that "
         "take no room: a terminal or a dialog shows another name than it has."},
    {.name = "member-unreadable",
     .about = "A member of the package can't be unpacked: it is damaged or encrypted. A run goes on without it."},
    {.name = "model-name",
     .severity = warning,
     .about = "Creo refuses the name for a new model: it has more than 31 characters, or others than letters, digits, "
              "'_' and '-'.",
     .example = R"(<task type="copyModel" version="3" forPRT="true" name="LOWER PLATE"/>)"},
    {.name = "number-broken",
     .about = "The value isn't wholly a number. Depending on the action it is cut, or the action fails.",
     .example = R"(<task type="setAccuracy" version="3" forPRT="true" value="0,01"/>)"},
    {.name = "number-range",
     .about = "The number is outside the range that the action takes.",
     .example = R"(eclevel="12")"},
    {.name = "path-missing",
     .about = "The package has no such file or folder.",
     .example = R"(path="@project_dir@/none.csv")"},
    {.name = "path-name",
     .severity = warning,
     .about =
         "A path leads to what Windows takes for no file: a device, such as NUL, a stream inside a file, or a name "
         "whose dot or blank at the end is dropped.",
     .example = R"(path="@project_dir@/aux.csv")"},
    {.name = "pattern-broken",
     .about = "The expression doesn't compile, so that it matches nothing.",
     .example = R"(name_0="/(/")"},
    {.name = "predicate-constant",
     .severity = warning,
     .about =
         "The item has the same answer for every model: its pattern fits everything or nothing, or it asks nothing.",
     .example = R"(<item type="filename" filename="*" filtertype="true"/>)"},
    {.name = "question",
     .about = "A question asks nothing, or its answer is lost.",
     .example = R"(<task type="setUserVariable" version="3" varType="2" varName="A"/>)"},
    {.name = "quote-missing",
     .about = "A value lacks one of its quotes; what follows is read otherwise than it was meant.",
     .example = R"(forPRT="true forASM="true")"},
    {.name = "report-filter-missing", .about = "reportUniversal without 'reportFilter': its field stays empty."},
    {.name = "report-path-twice",
     .severity = warning,
     .about = "Two reports are opened on one file; each writes over the other's lines.",
     .example = R"(file="@project_dir@/a.csv", twice)"},
    {.name = "reporter-unknown",
     .about = "No action of this section or one before it opens a report of this name, so that nothing is reported.",
     .example = R"(<task type="reportModeldata" version="3" forPRT="true" reporter="masses"/>)"},
    {.name = "section-missing",
     .about = "A list has four sections, or five: head, body, filter and foot, by their order alone.",
     .example = "<actionlist><body/></actionlist>"},
    {.name = "section-name",
     .severity = warning,
     .about = "Sections are told by their order, not by their names: this one is read as what it should be called.",
     .example = "<actionlist><head/><boddy/><filter/><foot/></actionlist>"},
    {.name = "section-order",
     .severity = warning,
     .about = "Sections are told by their order, not by their names: this one is read as another.",
     .example = "<actionlist><body/><head/><filter/><foot/></actionlist>"},
    {.name = "single-quotes",
     .about = "The reader knows double quotes alone: neither this attribute nor the one behind it is read.",
     .example = "name='A'"},
    {.name = "switch-letters",
     .about = "Only 'true' and 'false' in small letters are switches.",
     .example = R"(forPRT="True")"},
    {.name = "table", .about = "A table of the package can't be read as it stands."},
    {.name = "tag-crossed",
     .about = "A closing tag closes the innermost element, whatever it is called.",
     .example = "<body><task></body></task>"},
    {.name = "tag-extra", .about = "A closing tag closes nothing, or the element around.", .example = "</task>"},
    {.name = "tag-unclosed",
     .about = "An element that isn't closed takes in all that follows.",
     .example = R"(<task type="saveModel" version="3">)"},
    {.name = "template",
     .about = "A token or a text function is unknown, or a name is torn by a line break.",
     .example = R"(message="@mdlm@")"},
    {.name = "text-dropped", .severity = warning, .about = "Text between tags isn't read."},
    {.name = "unit-unread",
     .about = "A parameter of this type has no unit, so that it isn't created.",
     .example = R"(type_0="String" unit_0="mm")"},
    {.name = "user-variable-unset",
     .severity = warning,
     .about =
         "Nothing in this section or one before it sets this user variable; it must come from an earlier list of the "
         "session.",
     .example = R"(message="%user:NUMBER%")"},
    {.name = "uses-address", .severity = note, .about = "The list asks an address of the web."},
    {.name = "uses-letters", .severity = note, .about = "A code may hold letters that readers guess."},
    {.name = "uses-options", .severity = note, .about = "Options of Creo are saved once a model."},
    {.name = "uses-path", .severity = note, .about = "The list names a path outside the package."},
    {.name = "uses-program", .severity = note, .about = "The list starts a program."},
    {.name = "uses-units", .severity = note, .about = "A number loses its unit, or its unit moves it."},
    {.name = "value-missing",
     .about = "An attribute without a value becomes part of the next one's name; neither is read.",
     .example = R"(forEF forPRT="true")"},
    {.name = "word-unknown",
     .about = "The attribute knows certain words, and this is none of them.",
     .example = R"(type_0="Strnig")"},
};

}  // namespace

std::span<const Rule> rules() { return kRules; }

std::vector<std::string> ruleNames() {
  std::vector<std::string> names;
  for (const Rule& rule : kRules) names.emplace_back(rule.name);
  return names;
}

const Rule* findRule(std::string_view name) {
  const auto* found =
      std::find_if(std::begin(kRules), std::end(kRules), [&](const Rule& rule) { return rule.name == name; });
  return found == std::end(kRules) ? nullptr : found;
}

std::string_view word(Severity severity) {
  switch (severity) {
    case error:
      return "error";
    case warning:
      return "warning";
    case note:
      break;
  }
  return "note";
}

}  // namespace kelvane
