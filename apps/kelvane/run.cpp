// kelvane run: a list of a package on the models of a folder.
#include "kelvane/run_work.h"
#include "kelvane/verb.h"

namespace kelvane {
namespace {

class Run : public Verb {
 public:
  std::vector<OptionRow> options() override {
    RunOptions& o = options_;
    return {
        {"package", "PACKAGE", "a .kvz, or a folder of that layout", &o.package},
        {"list", "LIST", "an action list of it, with or without .xml", &o.list},
        {"folder", "DIR", "folder of models", &o.folder},
        // which models
        {"--start", "NAME.EXT", "begins at this model; without it at each that no other one uses", &o.starts},
        {"--select", "PATTERN", "only models whose NAME.EXT matches: \"BOLT*\", or an expression \"/.../\"", &o.select},
        {"--limit", "N", "only the first N of them", &o.limit},
        {"--filter", "FILE", "only what passes this filter file of the package", &o.filter},
        {"--again", "", "also the models that this list has worked before", &o.again},
        // what is kept
        {"--save", "touched|all|none",
         "which models are saved with their history: those that the list saves, all that were worked, or none more",
         &o.save},
        {"--into", "NEWDIR", "works on a copy of the models, made there", &o.into},
        {"--read-only", "", "writes reports, but never a model", &o.readOnly},
        {"-n,--dry-run", "", "writes nothing and prints what would change", &o.dryRun},
        {"--collect", "OUTDIR", "copies every file that the run wrote there", &o.collect},
        // surroundings
        {"--config", "DIR", "a folder with kvd_main.cfg", &o.config},
        {"--set", "KVD_KEY=VALUE", "a key of the configuration", &o.settings},
        {"--creo-option", "NAME=VALUE", "an option of Creo's own configuration", &o.creoOptions},
        {"--no-programs", "", "starts no program; an action that asks for one gets an error line", &o.noPrograms},
        {"--no-web", "", "asks nothing of the web; an action that does gets an error line", &o.noWeb},
        // output
        {"--log", "FILE", "where the log goes; else DIR/kelvane.log", &o.log},
        {"--events", "FILE", "JSON lines: models, changed values, log lines, files, recap", &o.events},
        {"--trace", "", "every operation too among the events", &o.trace},
        {"--max-errors", "N", "shows at most N error lines; 0 shows all", &o.maxErrors},
    };
  }
  int run(Console& console) override { return runList(options_, console); }

 private:
  RunOptions options_;
};

}  // namespace

std::unique_ptr<Verb> makeRun() { return std::make_unique<Run>(); }

}  // namespace kelvane
