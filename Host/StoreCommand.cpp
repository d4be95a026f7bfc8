#include "StoreCommand.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "AnswerText.h"
#include "CATIDOMDocument.h"
#include "CommandLine.h"
#include "HostOutputFile.h"
#include "HostRelations.h"
#include "HostSession.h"
#include "HostText.h"
#include "QTBConstants.h"
#include "QTBINodeAttributes.h"
#include "QTBIPdmNode.h"
#include "QTBPdmSessionUtil.h"
#include "QTBPdmStore.h"
#include "QTBXmlUtil.h"
#include "StandardOutput.h"
#include "StoreInput.h"

namespace fs = std::filesystem;

namespace {

std::vector<CATUnicodeString> ToTexts(const std::vector<std::string>& texts)
{
    return {texts.begin(), texts.end()};
}

// Where an answer goes: a file, which is there only when the answer is whole, or the standard output.
class AnswerOutput
{
public:
    explicit AnswerOutput(const std::string& path)
    {
        if (!path.empty()) {
            m_File.emplace(path);
        }
    }

    void Write(std::string_view piece)
    {
        if (m_File) {
            m_File->Write(piece);
        } else {
            std::cout << piece;
            if (StandardOutput::HasFailed()) {
                StandardOutput::Require();
            }
        }
    }

    void Finish()
    {
        if (m_File) {
            m_File->Complete();
        } else {
            StandardOutput::Require();
        }
    }

private:
    std::optional<HostOutputFile> m_File;
};

class StoreRun
{
public:
    explicit StoreRun(const StoreOptions& options) : m_Options(options), m_Session(options.schema, options.language) {}

    void Init()
    {
        HostSession::Require(QTBPdmStore::Create(m_Options.store), ExitCode::BadInput, "store");
        fmt::print("{}\n", m_Options.store);
    }

    void Import()
    {
        Open(false);
        for (const std::string& input : m_Options.inputs) {
            for (const CATIDOMDocument_var& spAnswer : StoreInput::ReadAnswers(input)) {
                QTBStoreImportReport report;
                HostSession::Require(m_pStore->Import(spAnswer, m_Options.folder, &report), ExitCode::BadInput, input);
                fmt::print("{}", StoreInput::Describe(input, report));
            }
        }
    }

    void Query()
    {
        QTBStoreQuery query;
        query.className = m_Options.className.c_str();
        query.newestVersionsOnly = !m_Options.allVersions;
        query.maxCount = m_Options.limit;
        for (const std::string& text : m_Options.attributes) {
            const auto attribute = StoreInput::ParseAttribute(text);
            query.conditions.push_back({attribute.first, attribute.second});
        }
        PrintAnswer([&query](QTBPdmStore& store, const QTBPdmStore::Receiver& receiver) {
            return store.Query(query, receiver);
        });
    }

    void Expand()
    {
        QTBStoreExpansion expansion;
        expansion.keys = ToTexts(m_Options.keys);
        expansion.levels = m_Options.level;
        for (const QTBNodeRelationInfo& relation : HostRelations::Get(m_Options.relations)) {
            expansion.relations.push_back(
                {relation.GetRelationName(), relation.GetRelationDirection() == usLEFT_TO_RIGHT});
        }
        PrintAnswer([&expansion](QTBPdmStore& store, const QTBPdmStore::Receiver& receiver) {
            return store.Expand(expansion, receiver);
        });
    }

    void Export()
    {
        PrintAnswer([this](QTBPdmStore& store, const QTBPdmStore::Receiver& receiver) {
            return store.Export(!m_Options.allVersions, receiver);
        });
    }

    void CheckOut()
    {
        Open(false);
        const std::vector<Target> targets = m_Options.folder.empty() ? std::vector<Target>() : FindTargets();
        const std::string answer = Apply([this](QTBPdmStore& store, const QTBPdmStore::Receiver& receiver) {
            return store.CheckOut(ToTexts(m_Options.keys), receiver);
        });
        FetchFiles(targets);
        fmt::print("{}", answer);
        for (const Target& target : targets) {
            fmt::print("{}\n", target.path.string());
        }
    }

    void CheckIn()
    {
        if (m_Options.files.size() > m_Options.keys.size()) {
            throw HostError(ExitCode::Usage, "--file: there are more files than keys");
        }
        Change([this](QTBPdmStore& store, const QTBPdmStore::Receiver& receiver) {
            return store.CheckIn(ToTexts(m_Options.keys), m_Options.files, receiver);
        });
    }

    void Promote()
    {
        Change([this](QTBPdmStore& store, const QTBPdmStore::Receiver& receiver) {
            return store.Promote(ToTexts(m_Options.keys), receiver);
        });
    }

    void Revise()
    {
        Change([this](QTBPdmStore& store, const QTBPdmStore::Receiver& receiver) {
            return store.Revise(ToTexts(m_Options.keys), receiver);
        });
    }

    void Update()
    {
        const CATUnicodeString usXml = StoreInput::MakeAttributesXml(m_Options.attributes);
        Change([this, &usXml](QTBPdmStore& store, const QTBPdmStore::Receiver& receiver) {
            return store.UpdateAttributes(m_Options.key.c_str(), usXml, receiver);
        });
    }

    void Relate()
    {
        const CATUnicodeString usXml = StoreInput::MakeAttributesXml(m_Options.attributes);
        Change([this, &usXml](QTBPdmStore& store, const QTBPdmStore::Receiver& receiver) {
            return store.CreateRelation(m_Options.className.c_str(), m_Options.left.c_str(), m_Options.right.c_str(),
                                        usXml, receiver);
        });
    }

    void Delete()
    {
        Change([this](QTBPdmStore& store, const QTBPdmStore::Receiver& receiver) {
            return store.Delete(ToTexts(m_Options.keys), m_Options.allVersions ? "AllVersions" : "", receiver);
        });
    }

    int Check()
    {
        Open(false);
        CATListValCATUnicodeString faults;
        HostSession::Require(m_pStore->Check(&faults), ExitCode::BadInput, "store");
        for (const CATUnicodeString& usFault : faults) {
            fmt::print("{}\n", usFault.View());
        }
        if (faults.Size() == 0) {
            fmt::print("no faults\n");
        }
        return static_cast<int>(faults.Size() == 0 ? ExitCode::Success : ExitCode::Failure);
    }

private:
    using Request = std::function<HRESULT(QTBPdmStore&, const QTBPdmStore::Receiver&)>;

    // Where the file of an object goes.
    struct Target
    {
        std::string key;
        fs::path path;
        // It is there, with the content that the store has.
        bool isThere;
    };

    void Open(bool isReadOnly)
    {
        QTBPdmStore::Options options;
        options.user = StoreInput::GetUser(m_Options.user).c_str();
        options.isReadOnly = isReadOnly;
        HostSession::Require(QTBPdmStore::Open(m_Options.store, options, &m_pStore), ExitCode::BadInput, "store");
    }

    // A request that reads: its answer is what the command prints.
    void PrintAnswer(const Request& request)
    {
        Open(true);
        if (m_pStore->IsOwnFile(m_Options.output)) {
            throw HostError(ExitCode::Usage, m_Options.output + " belongs to the store itself; choose another file");
        }
        AnswerOutput output(m_Options.output);
        HostSession::Require(request(*m_pStore, [&output](std::string_view piece) { output.Write(piece); }),
                             ExitCode::Failure, "store");
        output.Finish();
    }

    // A request that changes: the session reads its answer and says what became of the items.
    void Change(const Request& request)
    {
        Open(false);
        fmt::print("{}", Apply(request));
    }

    std::string Apply(const Request& request)
    {
        const CATIDOMDocument_var spAnswer = Ask(request);
        // The graph drops relations whose objects it does not hold.
        const std::string relations = AnswerText::DescribeRelations(spAnswer);
        return AnswerText::DescribeObjects(UpdateGraph(spAnswer)) + relations + AnswerText::DescribeDeleted(spAnswer);
    }

    CATIDOMDocument_var Ask(const Request& request)
    {
        std::string answer;
        HostSession::Require(request(*m_pStore, [&answer](std::string_view piece) { answer.append(piece); }),
                             ExitCode::Failure, "store");
        CATIDOMDocument_var spAnswer;
        HostSession::Require(QTBXmlUtil::GetTrustedDomDocument(answer, &spAnswer), ExitCode::Failure, "answer");
        return spAnswer;
    }

    CATListValCATBaseUnknown_var UpdateGraph(const CATIDOMDocument_var& spAnswer)
    {
        CATListValCATBaseUnknown_var objects;
        HostSession::Require(m_Session.GetPdmNodeCont()->UpdatePdmGraph(spAnswer, &objects, nullptr), ExitCode::Failure,
                             "PDM graph");
        return objects;
    }

    // Where the files of the objects go: into the folder, under their names. Nothing that is there is written over.
    std::vector<Target> FindTargets()
    {
        UpdateGraph(Ask([this](QTBPdmStore& store, const QTBPdmStore::Receiver& receiver) {
            return store.GetItems(ToTexts(m_Options.keys), receiver);
        }));
        CATUnicodeString usFileNameAttr;
        HostSession::Require(
            QTBPdmSessionUtil::GetPdmSessionStringAttrValue(QTB_PDM_SESSION_FILE_NAME_ATTR, &usFileNameAttr, TRUE),
            ExitCode::BadInput, "schema");
        std::vector<Target> targets;
        for (const std::string& key : m_Options.keys) {
            const fs::path path = fs::path(m_Options.folder) / GetFileName(key, usFileNameAttr);
            const auto other = std::find_if(targets.begin(), targets.end(),
                                            [&path](const Target& target) { return target.path == path; });
            if (other == targets.end()) {
                targets.push_back({key, path, IsThere(key, path)});
            } else if (other->key != key) {
                throw HostError(
                    ExitCode::Failure,
                    fmt::format("{} and {} have the same file name {}; check them out into different folders",
                                other->key, key, path.filename().string()));
            }
        }
        return targets;
    }

    fs::path GetFileName(const std::string& key, const CATUnicodeString& usFileNameAttr)
    {
        QTBIPdmNode_var spIPdmNode;
        unsigned char bFound = FALSE;
        HostSession::Require(m_Session.GetPdmNodeCont()->GetPdmNodeByKey(key.c_str(), &spIPdmNode, &bFound),
                             ExitCode::Failure, "PDM graph");
        unsigned char bHasName = FALSE;
        CATUnicodeString usFileName;
        const QTBINodeAttributes_var spINodeAttributes(spIPdmNode);
        if (spINodeAttributes != NULL_var &&
            SUCCEEDED(spINodeAttributes->AttributeIsDefined(usFileNameAttr, &bHasName)) && bHasName != FALSE &&
            SUCCEEDED(spINodeAttributes->GetStringAttributeValue(usFileNameAttr, &usFileName, FALSE, FALSE))) {
            // The name must not lead out of the folder.
            fs::path name = fs::path(HostText::ToText(usFileName)).filename();
            if (!name.empty() && name != "." && name != "..") {
                return name;
            }
        }
        throw HostError(ExitCode::Failure, key + " has no file name");
    }

    bool IsThere(const std::string& key, const fs::path& path) const
    {
        unsigned char bIsSame = FALSE;
        HostSession::Require(m_pStore->CompareFile(key.c_str(), path, &bIsSame), ExitCode::Failure, "store");
        if (bIsSame == FALSE && fs::exists(path)) {
            throw HostError(ExitCode::Failure,
                            fmt::format("{} is there already and is not what the store has of {}; move it away or "
                                        "choose another folder",
                                        path.string(), key));
        }
        return bIsSame != FALSE;
    }

    // Fetches the files of objects that were just checked out; when that fails, they are checked in as they were.
    void FetchFiles(const std::vector<Target>& targets)
    {
        std::vector<fs::path> fetched;
        try {
            for (const Target& target : targets) {
                if (!target.isThere) {
                    HostSession::Require(m_pStore->FetchFile(target.key.c_str(), target.path), ExitCode::Failure,
                                         "store");
                    fetched.push_back(target.path);
                }
            }
        } catch (const HostError& error) {
            for (const fs::path& path : fetched) {
                std::error_code ignored;
                fs::remove(path, ignored);
            }
            if (FAILED(m_pStore->CheckIn(ToTexts(m_Options.keys), {}, {}))) {
                throw HostError(ExitCode::Failure, std::string(error.what()) + " (the objects stay checked out)");
            }
            throw;
        }
    }

    const StoreOptions& m_Options;
    HostSession m_Session;
    std::unique_ptr<QTBPdmStore> m_pStore;
};

CLI::App* AddCommand(CLI::App& store, StoreOptions& options, const char* name, const char* description)
{
    CLI::App* pCommand = store.add_subcommand(name, description);
    pCommand->add_option("store", options.store, "file of the store")->required()->type_name("STORE");
    pCommand->add_option("--user", options.user, "user who makes the request (who runs the program if not given)")
        ->type_name("NAME");
    pCommand->add_option("--schema", options.schema, "PDM schema (the example schema if not given)")->type_name("FILE");
    pCommand->add_option("--language", options.language, "language of messages and display names")->type_name("NAME");
    return pCommand;
}

void AddKeys(CLI::App& command, StoreOptions& options)
{
    command.add_option("keys", options.keys, "PDM keys; all are done or none")->required()->type_name("KEY");
}

void AddOutput(CLI::App& command, StoreOptions& options)
{
    command.add_option("-o,--output", options.output, "file for the answer (standard output if not given)")
        ->type_name("FILE");
}

void AddAttributes(CLI::App& command, StoreOptions& options, const char* description)
{
    command.add_option("attributes", options.attributes, description)->type_name("NAME=VALUE");
}

void AddReadingRequests(CLI::App& store, StoreOptions& options)
{
    CLI::App* pQuery = AddCommand(store, options, "query", "Find objects by class and attributes");
    AddAttributes(*pQuery, options, "conditions; a star stands for any text");
    pQuery->add_option("--class", options.className, "class, subclasses included (any if not given)")
        ->type_name("NAME");
    pQuery->add_flag("--all-versions", options.allVersions, "old versions too");
    pQuery->add_option("--limit", options.limit, "objects to find at most")
        ->check(CommandLine::NumberFrom(1))
        ->type_name("N");
    AddOutput(*pQuery, options);

    CLI::App* pExpand = AddCommand(store, options, "expand", "Follow relations from objects");
    AddKeys(*pExpand, options);
    pExpand->add_option("--relation", options.relations, "relation to follow (all relations if not given)")
        ->allow_extra_args(false)
        ->type_name("NAME[:left|:right]");
    pExpand->add_option("--level", options.level, "levels (all if not given)")
        ->check(CommandLine::NumberFrom(0))
        ->type_name("N");
    AddOutput(*pExpand, options);

    CLI::App* pExport = AddCommand(store, options, "export", "Write everything as one answer");
    pExport->add_flag("--all-versions", options.allVersions, "old versions too");
    AddOutput(*pExport, options);
}

void AddChangingRequests(CLI::App& store, StoreOptions& options)
{
    CLI::App* pCheckOut = AddCommand(store, options, "checkout", "Check out objects");
    AddKeys(*pCheckOut, options);
    pCheckOut->add_option("--to", options.folder, "folder for the objects' files")
        ->check(CLI::ExistingDirectory)
        ->type_name("DIR");

    CLI::App* pCheckIn = AddCommand(store, options, "checkin", "Check in objects");
    AddKeys(*pCheckIn, options);
    pCheckIn->add_option("--file", options.files, "file that the object has now; once for each key, in their order")
        ->allow_extra_args(false)
        ->type_name("FILE");

    AddKeys(*AddCommand(store, options, "promote", "Bring objects into their next state"), options);
    AddKeys(*AddCommand(store, options, "revise", "Make new versions of objects"), options);

    CLI::App* pUpdate = AddCommand(store, options, "update", "Change attributes of an item");
    pUpdate->add_option("key", options.key, "PDM key")->required()->type_name("KEY");
    pUpdate->add_option("attributes", options.attributes, "new values")->required()->type_name("NAME=VALUE");

    CLI::App* pRelate = AddCommand(store, options, "relate", "Make a relation between two objects");
    pRelate->add_option("relation", options.className, "class of the relation")->required()->type_name("RELATION");
    pRelate->add_option("left", options.left, "PDM key of the left object")->required()->type_name("LEFT");
    pRelate->add_option("right", options.right, "PDM key of the right object")->required()->type_name("RIGHT");
    AddAttributes(*pRelate, options, "attributes of the relation");

    CLI::App* pDelete = AddCommand(store, options, "delete", "Delete objects, with their relations, and relations");
    AddKeys(*pDelete, options);
    pDelete->add_flag("--all-versions", options.allVersions, "with all versions, not only the newest");
}

} // namespace

void AddStore(CLI::App& app, StoreOptions& options)
{
    CLI::App* pStore = app.add_subcommand("store", "A PDM store: a PDM system in a file");
    pStore->require_subcommand(1);
    pStore->footer(
        R"(Examples:
  qtbhost store init pdm.store
  qtbhost store import pdm.store examples/as1/structure.xml examples/as1/files.xml
  qtbhost store query pdm.store --class Part "PartNumber=rod*"
  qtbhost store expand pdm.store as1 --relation PartPart -o answer.xml && qtbhost tree answer.xml
  qtbhost store checkout pdm.store --user kim nut
  qtbhost store revise pdm.store --user kim nut

docs/store.md says who may do what.

Exit codes: 0 done, 1 refused, 2 wrong command line, 3 input that cannot be read.)");

    AddCommand(*pStore, options, "init", "Make an empty store");

    CLI::App* pImport = AddCommand(*pStore, options, "import", "Take in PDM answers and STEP assemblies");
    pImport->add_option("inputs", options.inputs, "answers (.xml) and STEP files, each as a whole")
        ->required()
        ->type_name("FILE");
    pImport->add_option("--files", options.folder, "folder with the files of file objects")->type_name("DIR");

    AddReadingRequests(*pStore, options);
    AddChangingRequests(*pStore, options);

    AddCommand(*pStore, options, "check", "Look for faults in a store and remove files that nobody refers to");
}

int RunStore(const CLI::App& app, const StoreOptions& options)
{
    const std::string command = app.get_subcommand("store")->get_subcommands().front()->get_name();
    StoreRun run(options);
    if (command == "check") {
        return run.Check();
    }
    const std::pair<const char*, void (StoreRun::*)()> commands[] = {
        {"init", &StoreRun::Init},       {"import", &StoreRun::Import},     {"query", &StoreRun::Query},
        {"expand", &StoreRun::Expand},   {"checkout", &StoreRun::CheckOut}, {"checkin", &StoreRun::CheckIn},
        {"promote", &StoreRun::Promote}, {"revise", &StoreRun::Revise},     {"update", &StoreRun::Update},
        {"relate", &StoreRun::Relate},   {"delete", &StoreRun::Delete},     {"export", &StoreRun::Export},
    };
    for (const auto& [name, pRun] : commands) {
        if (command == name) {
            (run.*pRun)();
            return static_cast<int>(ExitCode::Success);
        }
    }
    throw std::logic_error("store " + command + " has no function");
}
