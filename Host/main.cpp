// qtbhost: drives the object-model library as a CAD session would.

#include <cstdio>
#include <exception>
#include <iostream>

#include <CLI/CLI.hpp>

#include "HostError.h"
#include "TreeCommand.h"
#ifdef QTB_WITH_STEP
#include "ConvertCommand.h"
#endif

namespace {

void AddTree(CLI::App& app, TreeOptions& options)
{
    CLI::App* pTree = app.add_subcommand("tree", "Show PDM answers as the trees of a PDM window");
    pTree->footer(
        R"(Opens a PDM document with its window, reads each answer into the PDM graph and lets the window's tree follow, then
expands it as the expand command does.

A relation is followed to the right (from the left object to the right one) unless it says otherwise:
  --relation PartPart             the parts of a part
  --relation PartPart:left        where a part is used

Examples:
  qtbhost tree examples/as1/structure.xml examples/as1/files.xml
  qtbhost tree --root nut --relation PartPart:left --level 2 examples/as1/structure.xml
  qtbhost tree --json --schema QTBSchema.xml ANSWER.xml | jq .counts

Exit codes: 0 done, 1 the session stopped short, 2 wrong command line, 3 input that cannot be read.)");
    pTree->add_option("answers", options.answers, "PDM answers, read in this order")->required()->type_name("ANSWER");
    pTree->add_option("--schema", options.schema, "PDM schema (the example schema if not given)")->type_name("FILE");
    pTree->add_option("--root", options.roots, "PDM key of a root to show instead of the answers' own")
        ->allow_extra_args(false)
        ->type_name("KEY");
    pTree->add_option("--relation", options.relations, "relation to expand along (all relations if not given)")
        ->allow_extra_args(false)
        ->type_name("NAME[:left|:right]");
    pTree->add_option("--level", options.level, "object levels to expand below a root (all if not given)")
        ->check(CLI::NonNegativeNumber)
        ->type_name("N");
    pTree->add_option("--consider", options.consider, "PDM nodes to show: all, recent (newest action) or current")
        ->check(CLI::IsMember({"all", "recent", "current"}))
        ->type_name("WHICH")
        ->capture_default_str();
    pTree->add_option("--show-level", options.showLevel, "tree levels to print (all if not given)")
        ->check(CLI::NonNegativeNumber)
        ->type_name("N");
    pTree->add_flag("--json", options.asJson, "print for programs");
    pTree->add_option("--language", options.language, "language of messages and display names, for example German")
        ->type_name("NAME");
    pTree->add_flag("--debug", options.debug, "write the debug output");
    pTree->add_option("--trace-level", options.traceLevel, "with --debug: 2 adds every operation, 3 lost nodes")
        ->type_name("N");
}

} // namespace

int main(int argc, char** argv)
{
    CLI::App app("Drives the object-model library of a PDM integration as a CAD session would.", "qtbhost");
    app.require_subcommand(1);
    app.get_formatter()->column_width(34);

    TreeOptions treeOptions;
    AddTree(app, treeOptions);
#ifdef QTB_WITH_STEP
    ConvertOptions convertOptions;
    CLI::App* pConvert = app.add_subcommand("convert", "Write the PDM answers of a STEP assembly");
    pConvert->add_option("assembly", convertOptions.assembly, "STEP file")->required()->type_name("STEP");
    pConvert->add_option("folder", convertOptions.folder, "folder for the answers")->required()->type_name("DIR");
#endif

    try {
        app.parse(argc, argv);
        if (app.got_subcommand("tree")) {
            return RunTree(treeOptions);
        }
#ifdef QTB_WITH_STEP
        if (app.got_subcommand("convert")) {
            RunConvert(convertOptions);
        }
#endif
        return static_cast<int>(ExitCode::Success);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : static_cast<int>(ExitCode::Usage);
    } catch (const HostError& error) {
        std::cerr << "qtbhost: " << error.what() << '\n';
        return static_cast<int>(error.GetExitCode());
    } catch (const std::exception& error) {
        std::cerr << "qtbhost: " << error.what() << '\n';
        return static_cast<int>(ExitCode::Failure);
    }
}
