// qtbhost: drives the object-model library as a CAD session would.

#include <algorithm>
#include <cstdio>
#include <exception>
#include <iostream>
#include <iterator>
#include <new>
#include <stdexcept>

#include <CLI/CLI.hpp>

#include "BoxesCommand.h"
#include "CATUnicodeString.h"
#include "CommandLine.h"
#include "HostError.h"
#include "LinkCommand.h"
#include "ProductCommands.h"
#include "ShellCommand.h"
#include "StandardOutput.h"
#include "StoreCommand.h"
#include "StoreInput.h"
#include "TreeCommand.h"
#ifdef QTB_WITH_STEP
#include "ConvertCommand.h"
#endif

namespace {

constexpr const char* ANSWERS_HELP = "PDM answers, read in this order; - is the standard input";

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
  qtbhost store expand pdm.store as1 | qtbhost tree -

Exit codes: 0 done, 1 the session stopped short, 2 wrong command line, 3 input that cannot be read.)");
    pTree->add_option("answers", options.answers, ANSWERS_HELP)->required()->type_name("ANSWER");
    pTree->add_option("--schema", options.schema, "PDM schema (the example schema if not given)")->type_name("FILE");
    pTree->add_option("--root", options.roots, "PDM key of a root to show instead of the answers' own")
        ->allow_extra_args(false)
        ->type_name("KEY");
    pTree->add_option("--relation", options.relations, "relation to expand along (all relations if not given)")
        ->allow_extra_args(false)
        ->type_name("NAME[:left|:right]");
    pTree->add_option("--level", options.level, "object levels to expand below a root (all if not given)")
        ->check(CommandLine::NumberFrom(0))
        ->type_name("N");
    pTree->add_option("--consider", options.consider, "PDM nodes to show: all, recent (newest action) or current")
        ->check(CLI::IsMember({"all", "recent", "current"}))
        ->type_name("WHICH")
        ->capture_default_str();
    pTree->add_option("--show-level", options.showLevel, "tree levels to print (all if not given)")
        ->check(CommandLine::NumberFrom(0))
        ->type_name("N");
    pTree->add_flag("--json", options.asJson, "print for programs");
    pTree->add_option("--language", options.language, "language of messages and display names, for example German")
        ->type_name("NAME");
    pTree->add_flag("--debug", options.debug, "write the debug output");
    pTree->add_option("--trace-level", options.traceLevel, "with --debug: 2 adds every operation, 3 lost nodes")
        ->type_name("N");
}

template <class Options>
void AddSessionOptions(CLI::App& command, Options& options)
{
    command.add_option("--schema", options.schema, "PDM schema (the example schema if not given)")->type_name("FILE");
    command.add_flag("--json", options.asJson, "print for programs");
    command.add_option("--language", options.language, "language of messages and display names, for example German")
        ->type_name("NAME");
    command.add_flag("--debug", options.debug, "write the debug output");
}

constexpr const char* ASSEMBLY_HELP = "product structure file (.xml, docs/formats.md) or STEP file";

void AddLink(CLI::App& app, LinkOptions& options)
{
    CLI::App* pLink = app.add_subcommand("link", "Show a CAD assembly beside its PDM data");
    pLink->footer(
        R"(For every product: which PDM part, relation and file correspond, and why:
  by instance       a relation places the part below the father's, under the instance name
  by part number    a part has the product's number; a relation that was rejected is named
  not in PDM        neither; or a broken link
Then what the PDM window shows and the assembly does not have.

Examples:
  qtbhost link examples/as1/products.xml examples/as1/structure.xml examples/as1/files.xml
  qtbhost link --highlight rod-assembly_1/nut_2 examples/as1/products.xml examples/as1/structure.xml
  qtbhost link --highlight-pdm nut examples/as1/products.xml examples/as1/structure.xml

Exit codes: 0 done, 1 the session could not do it, 2 wrong command line, 3 input that cannot be read.)");
    pLink->add_option("assembly", options.assembly, ASSEMBLY_HELP)->required()->type_name("ASSEMBLY");
    pLink->add_option("answers", options.answers, ANSWERS_HELP)->required()->type_name("ANSWER");
    pLink->add_option("--highlight", options.highlight, "instance names down to a product, to show in the PDM window")
        ->type_name("PATH");
    pLink->add_option("--highlight-pdm", options.highlightPdm, "key of a PDM item to show in the assembly")
        ->type_name("KEY");
    AddSessionOptions(*pLink, options);
}

void AddProductCommands(CLI::App& app, ProductOptions& options)
{
    CLI::App* pDiff = app.add_subcommand("diff", "Show the instances added to and missing from each product");
    pDiff->footer(
        R"(Products are the same when their part numbers are, instances of a product when their names and parts are. Of a product
that only one of the assemblies has all instances are shown:
  + INSTANCE (PART)    only in NEW
  - INSTANCE (PART)    only in OLD
Answers change what is compared: as in a PDM session, instances go by the PDM relation that they were made from and
their name (RELATION/NAME), one that the PDM data place with another part is both added and missing, and one that the
PDM data do not know is never missing.

Examples:
  qtbhost diff old.xml new.xml
  qtbhost diff old.step new.step ANSWER.xml

Exit codes: 0 done, 1 the session could not do it, 2 wrong command line, 3 input that cannot be read.)");
    pDiff->add_option("old", options.oldAssembly, ASSEMBLY_HELP)->required()->type_name("OLD");
    pDiff->add_option("new", options.assembly, ASSEMBLY_HELP)->required()->type_name("NEW");
    pDiff->add_option("answers", options.answers, ANSWERS_HELP)->type_name("ANSWER");
    AddSessionOptions(*pDiff, options);

    CLI::App* pDirty = app.add_subcommand("dirty", "Show which documents have to be saved in the PDM system");
    pDirty->footer(
        R"(For every document of the assembly, components in it left out: whether it has to be saved, and why.
  save    not in the PDM system, or no file of it there, or a file of another name; changed in the session since it was
          opened; or the file on disk is another one than was last exchanged with the PDM system
  keep    none of these
What is in the PDM system the answers say: without any, every document is new to it.

Examples:
  qtbhost dirty examples/as1/products.xml examples/as1/structure.xml examples/as1/files.xml

Exit codes: 0 done, 1 the session could not do it, 2 wrong command line, 3 input that cannot be read.)");
    pDirty->add_option("assembly", options.assembly, ASSEMBLY_HELP)->required()->type_name("ASSEMBLY");
    pDirty->add_option("answers", options.answers, ANSWERS_HELP)->type_name("ANSWER");
    AddSessionOptions(*pDirty, options);

    CLI::App* pTypes = app.add_subcommand("types", "Show the products' types and the commands that change them");
    pTypes->footer(
        R"(For every document of the assembly and every component in it: its type and file, its PDM node type, which is
derived where nobody set it, and the commands that set another one. A product that the PDM system has gets no commands.

Examples:
  qtbhost types examples/as1/products.xml examples/as1/structure.xml

Exit codes: 0 done, 1 the session could not do it, 2 wrong command line, 3 input that cannot be read.)");
    pTypes->add_option("assembly", options.assembly, ASSEMBLY_HELP)->required()->type_name("ASSEMBLY");
    pTypes->add_option("answers", options.answers, ANSWERS_HELP)->type_name("ANSWER");
    AddSessionOptions(*pTypes, options);
}

void AddBoxes(CLI::App& app, BoxesOptions& options)
{
    CLI::App* pBoxes = app.add_subcommand("boxes", "List and draw the bounding boxes of an assembly");
    pBoxes->footer(
        R"(A box for each place of a product that has a shape: number, corner, opposite corner in millimetres, instance names.
Boxes come from the shapes of a STEP file, or from the properties BoundingBox and Placement of a product structure file.
The picture shows them from the front right above, the marked ones in red.

Examples:
  qtbhost boxes examples/as1/products.xml
  qtbhost boxes examples/as1/products.xml --mark rod-assembly_1 --mark plate_1 --png as1.png

Exit codes: 0 done, 1 the session could not do it, 2 wrong command line, 3 input that cannot be read.)");
    pBoxes->add_option("assembly", options.assembly, ASSEMBLY_HELP)->required()->type_name("ASSEMBLY");
    pBoxes->add_option("--png", options.png, "picture to draw")->type_name("FILE");
    pBoxes
        ->add_option("--mark", options.marks,
                     "instance names down to a product whose box is to be marked, or whose parts'")
        ->allow_extra_args(false)
        ->type_name("PATH");
    pBoxes->add_option("--size", options.size, "width and height of the picture in pixels")
        ->check(CLI::Range(16, 8192))
        ->type_name("N")
        ->capture_default_str();
    pBoxes->add_option("--schema", options.schema, "PDM schema (the example schema if not given)")->type_name("FILE");
    pBoxes->add_option("--language", options.language, "language of messages")->type_name("NAME");
}

void AddShell(CLI::App& app, ShellOptions& options)
{
    CLI::App* pShell = app.add_subcommand("shell", "Work in a session, line by line");
    pShell->footer(
        R"(Without a script the lines come from the standard input: edited on a terminal, with completion and history, plain
from a pipe. The command help lists the commands. On a terminal Ctrl-C clears the line and Ctrl-D ends the session.
Colours are for terminals only; NO_COLOR turns them off.

Examples:
  qtbhost shell
  qtbhost shell --store pdm.store --user kim examples/circle.txt

Exit codes: 0 done, 1 a line failed, 2 wrong command line, 3 input that cannot be read.)");
    pShell->add_option("script", options.script, "file with commands")->type_name("FILE");
    CLI::Option* pStore = pShell->add_option("--store", options.store, "PDM store to work with")->type_name("FILE");
    pShell->add_option("--user", options.user, "user of the store (who runs the program if not given)")
        ->needs(pStore)
        ->type_name("NAME");
    pShell->add_option("--schema", options.schema, "PDM schema (the example schema if not given)")->type_name("FILE");
    pShell->add_option("--language", options.language, "language of messages and display names")->type_name("NAME");
    pShell->add_flag("--debug", options.debug, "write the debug output");
}

#ifdef QTB_WITH_STEP
void AddConvert(CLI::App& app, ConvertOptions& options)
{
    CLI::App* pConvert = app.add_subcommand("convert", "Write the PDM answers of a STEP assembly");
    pConvert->footer(
        R"(Writes what a PDM system would answer for the assembly, and its product structure (docs/formats.md), one file each;
DIR is made when it is not there.

Examples:
  qtbhost convert gearbox.step answers && qtbhost link answers/products.xml answers/structure.xml answers/files.xml

Exit codes: 0 done, 1 the session could not do it, 2 wrong command line, 3 input that cannot be read.)");
    pConvert->add_option("assembly", options.assembly, "STEP file")->required()->type_name("STEP");
    pConvert->add_option("folder", options.folder, "folder for the answers")->required()->type_name("DIR");
}
#endif

// Everything that is given is text of the session, but these are names of files, which are opened as they are given.
constexpr const char* FILES_AS_GIVEN[] = {"--output", "--png",   "script", "--store",
                                          "store",    "--files", "--file", "--to"};

void RequireUtf8(const CLI::App& command)
{
    for (const CLI::Option* pOption : command.get_options()) {
        if (std::any_of(std::begin(FILES_AS_GIVEN), std::end(FILES_AS_GIVEN),
                        [pOption](const char* name) { return pOption->check_name(name); })) {
            continue;
        }
        for (const std::string& text : pOption->results()) {
            if (!StoreInput::IsUtf8(text)) {
                throw HostError(ExitCode::Usage, pOption->get_name() + " " +
                                                     std::string(CATUnicodeString(text).View()) + " is no UTF-8 text");
            }
        }
    }
    for (const CLI::App* pSubcommand : command.get_subcommands()) {
        RequireUtf8(*pSubcommand);
    }
}

int Run(int argc, char** argv)
{
    CLI::App app("Drives the object-model library of a PDM integration as a CAD session would.", "qtbhost");
    app.require_subcommand(1);
    app.set_version_flag("--version", "qtbhost " QTB_VERSION, "print the version");
    app.get_formatter()->column_width(34);

    TreeOptions treeOptions;
    AddTree(app, treeOptions);
    LinkOptions linkOptions;
    AddLink(app, linkOptions);
    ProductOptions productOptions;
    AddProductCommands(app, productOptions);
    BoxesOptions boxesOptions;
    AddBoxes(app, boxesOptions);
    ShellOptions shellOptions;
    AddShell(app, shellOptions);
    StoreOptions storeOptions;
    AddStore(app, storeOptions);
#ifdef QTB_WITH_STEP
    ConvertOptions convertOptions;
    AddConvert(app, convertOptions);
#endif

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        const std::string unknown = CommandLine::DescribeUnknownWord(app);
        if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::RequiredError) && !unknown.empty()) {
            throw HostError(ExitCode::Usage, unknown);
        }
        return app.exit(error) == 0 ? 0 : static_cast<int>(ExitCode::Usage);
    }
    RequireUtf8(app);
    if (app.got_subcommand("tree")) {
        return RunTree(treeOptions);
    }
    if (app.got_subcommand("shell")) {
        return RunShell(shellOptions);
    }
    if (app.got_subcommand("store")) {
        return RunStore(app, storeOptions);
    }
    if (app.got_subcommand("link")) {
        return RunLink(linkOptions);
    }
    if (app.got_subcommand("boxes")) {
        return RunBoxes(boxesOptions);
    }
    if (app.got_subcommand("diff")) {
        return RunDiff(productOptions);
    }
    if (app.got_subcommand("dirty")) {
        return RunDirty(productOptions);
    }
    if (app.got_subcommand("types")) {
        return RunTypes(productOptions);
    }
#ifdef QTB_WITH_STEP
    if (app.got_subcommand("convert")) {
        return RunConvert(convertOptions);
    }
#endif
    throw std::logic_error(app.get_subcommands().front()->get_name() + " has no function");
}

} // namespace

int main(int argc, char** argv)
{
    StandardOutput::Prepare();
    try {
        const int result = Run(argc, argv);
        StandardOutput::Require();
        return result;
    } catch (const HostError& error) {
        std::cerr << "qtbhost: " << error.what() << '\n';
        return static_cast<int>(error.GetExitCode());
    } catch (const std::bad_alloc&) {
        std::cerr << "qtbhost: " << NO_MEMORY << '\n';
        return static_cast<int>(ExitCode::Failure);
    } catch (const std::exception& error) {
        // Whoever printed last may have heard of it in his own words.
        std::cerr << "qtbhost: " << (StandardOutput::HasFailed() ? StandardOutput::FAILURE : error.what()) << '\n';
        return static_cast<int>(ExitCode::Failure);
    }
}
