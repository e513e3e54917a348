// kelvane run: a list of a package on the models of a folder.
#include "kelvane/base/verb.h"
#include "kelvane/run/option_rows.h"
#include "kelvane/run/work.h"

namespace kelvane {
namespace {

class Run : public Verb {
 public:
  std::vector<OptionRow> options() override {
    RunOptions& o = options_;
    std::vector<OptionRow> rows = {
        {"package", "PACKAGE", "a .kvz, or a folder of that layout", &o.package},
        {"list", "LIST", "an action list of it, with or without .xml", &o.list},
        {"folder", "DIR", "folder of models", &o.folder},
        // which models
        {"--start", "NAME.EXT", "begins at this model; without it at each that no other one uses", &o.starts},
        {"--select", "PATTERN", "only models whose NAME.EXT matches: \"BOLT*\", or an expression \"/.../\"", &o.select},
        {"--limit", "N", "only the first N of them", &o.limit},
        {"--filter", "FILE", "only what passes this filter file of the package", &o.filter},
        {"--again", "", "also the models that this list has worked before", &o.again},
        {"--head-foot", "", "runs the list's Head and Foot though no model is left to work", &o.headFoot},
        // what is kept
        {"--save", "touched|all|none",
         "which models are saved with their history: those that the list saves, all that were worked, or none more",
         &o.save},
        {"--into", "NEWDIR", "works on a copy of the models, made there", &o.into},
        {"--read-only", "", "writes reports, but never a model", &o.readOnly},
        {"-n,--dry-run", "", "writes nothing and prints what would change", &o.dryRun},
        durableRow(o),
        {"--collect", "OUTDIR", "copies every file that the run wrote there", &o.collect},
        elsewhereRow(o.elsewhere),
        {"--reason", "TEXT", "why this run is made; it stands in the journal", &o.reason},
        // surroundings
        {"--vault", "VAULT", "a PDM folder whose workspace the folder of models is; the first one is active",
         &o.vaults},
        {"--workspace", "NAME", "the workspace's name; without it that of the folder", &o.workspace},
        {"--user", "NAME", "who works; without it who is logged in", &o.user},
        {"--check-out", "", "checks the chosen models out before the run, as its button does", &o.checkOut},
        {"--answer", "NAME=VALUE", "answers the list's question for that variable", &o.answers},
        {"--no-programs", "", "starts no program; an action that asks for one gets an error line", &o.noPrograms},
        {"--no-web", "", "asks nothing of the web; an action that does gets an error line", &o.noWeb},
        {"--accept", "FORMATS", "counts it as a warning that no open library writes them: sat,dwg,productview,pdf3d",
         &o.accept},
        // output
        {"--log", "FILE", "where the log goes; else DIR/kelvane.log", &o.log},
        {"--trace", "FILE", "records there what is asked of Creo and what it answers, for 'kelvane replay'",
         &trace_.file},
        {"--trace-time", "SECONDS", "the clock stands there while a trace is recorded, counted from 1970 on; else now",
         &trace_.time},
    };
    for (const auto& more : {surroundingRows(o), outputRows(o), confinementRows(o.grants)})
      rows.insert(rows.end(), more.begin(), more.end());
    rows.push_back(trustRow(o.grants));
    return rows;
  }
  int run(Console& console) override {
    options_.given = givenOptions(options());
    return runList(options_, trace_, console);
  }

 private:
  RunOptions options_;
  TraceOptions trace_;
};

}  // namespace

std::unique_ptr<Verb> makeRun() { return std::make_unique<Run>(); }

}  // namespace kelvane
