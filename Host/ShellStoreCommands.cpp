#include "ShellStoreCommands.h"

#include <algorithm>
#include <filesystem>
#include <ostream>

#include <fmt/format.h>
#include <fmt/ostream.h>

#include "AnswerText.h"
#include "QTBCommUtil.h"
#include "QTBICommunicationServices.h"
#include "QTBIPdmObjNode.h"
#include "QTBIRepNodeCont.h"
#include "QTBNodeRelationInfo.h"
#include "QTBPdmStore.h"
#include "QTBRequestCommands.h"
#include "QTBStoreImportReport.h"
#include "StoreInput.h"

namespace {

// An answer with more relations only says how many.
constexpr int MAX_TOLD_RELATIONS = 4;

} // namespace

ShellGroup ShellStoreCommands::GetStoreGroup()
{
    return {
        "PDM system",
        {
            {"store", "[FILE [USER]]", "work with a PDM store, in the name of a user; without FILE say which it is", 0,
             2, ShellRun(this, &ShellStoreCommands::Connect)},
            {"user", "NAME", "go on with the store in the name of another user", 1, 1,
             ShellRun(this, &ShellStoreCommands::ChangeUser)},
            {"newstore", "FILE [USER]", "make an empty PDM store and work with it", 1, 2,
             ShellRun(this, &ShellStoreCommands::Create)},
            {"import", "FILE... [DIR]", "take answers and STEP files into the store, with the files in DIR", 1,
             MAX_ARGUMENTS, ShellRun(this, &ShellStoreCommands::Import)},
            {"query", "[CLASS] [NAME=VALUE...]", "find objects and show them; a star stands for any text", 0,
             MAX_ARGUMENTS, ShellRun(this, &ShellStoreCommands::Query)},
            {"get", "KEY...", "read items from the store", 1, MAX_ARGUMENTS, ShellRun(this, &ShellStoreCommands::Get)},
            {"refresh", "", "read everything anew that the current window shows", 0, 0,
             ShellRun(this, &ShellStoreCommands::Refresh)},
            {"checkout", "NODE...", "check out objects", 1, MAX_ARGUMENTS,
             ShellRun(this, &ShellStoreCommands::CheckOut)},
            {"checkin", "NODE [FILE]", "check in an object, with the file that it has now", 1, 2,
             ShellRun(this, &ShellStoreCommands::CheckIn)},
            {"promote", "NODE...", "bring objects into their next state", 1, MAX_ARGUMENTS,
             ShellRun(this, &ShellStoreCommands::Promote)},
            {"revise", "NODE...", "make new versions of objects", 1, MAX_ARGUMENTS,
             ShellRun(this, &ShellStoreCommands::Revise)},
            {"update", "NODE NAME=VALUE...", "change attributes of an item", 2, MAX_ARGUMENTS,
             ShellRun(this, &ShellStoreCommands::Update)},
            {"create", "CLASS [NAME=VALUE...]", "create an object", 1, MAX_ARGUMENTS,
             ShellRun(this, &ShellStoreCommands::CreateObject)},
            {"relate", "RELATION NODE NODE [NAME=VALUE...]", "make a relation between two objects", 3, MAX_ARGUMENTS,
             ShellRun(this, &ShellStoreCommands::Relate)},
            {"delete", "NODE...", "delete objects, with their relations, and relations", 1, MAX_ARGUMENTS,
             ShellRun(this, &ShellStoreCommands::Delete)},
            {"versions", "NODE", "print all versions of an object", 1, 1,
             ShellRun(this, &ShellStoreCommands::PrintVersions)},
            {"checkedout", "[USER]", "print what a user has checked out", 0, 1,
             ShellRun(this, &ShellStoreCommands::PrintCheckedOut)},
            {"fetch", "NODE FILE", "write the file of an object", 2, 2, ShellRun(this, &ShellStoreCommands::Fetch)},
        }};
}

QTBIPdmRequests_var ShellStoreCommands::GetRequests() const
{
    QTBICommunicationServices_var spICommunicationServices;
    if (m_Context.session.GetStore() == nullptr || FAILED(QTBCommUtil::GetCommComponent(&spICommunicationServices))) {
        throw HostError(ExitCode::Usage, "there is no PDM store; store FILE opens one");
    }
    return QTBIPdmRequests_var(spICommunicationServices);
}

CATListValCATBaseUnknown_var ShellStoreCommands::TakeAnswer(const CATIDOMDocument_var& spAnswer)
{
    CATListValCATBaseUnknown_var objects;
    // Told before: the graph drops relations whose objects it does not hold.
    const int relationCount = AnswerText::CountRelations(spAnswer);
    const std::string relations = relationCount <= MAX_TOLD_RELATIONS ? AnswerText::DescribeRelations(spAnswer)
                                                                      : fmt::format("{} relations\n", relationCount);
    const std::string deleted = AnswerText::DescribeDeleted(spAnswer);
    HostSession::Require(QTBRequestCommands::TakeAnswer(spAnswer, &objects, nullptr), ExitCode::Failure, "PDM graph");
    fmt::print(m_Context.out, "{}{}{}", AnswerText::DescribeObjects(objects), relations, deleted);
    return objects;
}

CATListValCATBaseUnknown_var ShellStoreCommands::Run(const Request& request)
{
    const QTBIPdmRequests_var spIPdmRequests = GetRequests();
    CATIDOMDocument_var spAnswer;
    HostSession::Require(request(*spIPdmRequests, &spAnswer), ExitCode::Failure, "PDM store");
    return TakeAnswer(spAnswer);
}

ShellArguments ShellStoreCommands::Rest(const ShellArguments& arguments, std::size_t first)
{
    return ShellArguments(arguments.begin() + static_cast<std::ptrdiff_t>(std::min(first, arguments.size())),
                          arguments.end());
}

void ShellStoreCommands::Connect(const ShellArguments& arguments)
{
    if (!arguments.empty()) {
        m_Context.session.ConnectStore(arguments[0], arguments.size() > 1 ? arguments[1] : "");
        return;
    }
    GetRequests();
    fmt::print(m_Context.out, "{}, user {}\n", m_Context.session.GetStorePath(),
               m_Context.session.GetStore()->GetUser().View());
}

void ShellStoreCommands::ChangeUser(const ShellArguments& arguments)
{
    GetRequests();
    m_Context.session.ConnectStore(m_Context.session.GetStorePath(), arguments[0]);
}

void ShellStoreCommands::Create(const ShellArguments& arguments)
{
    HostSession::Require(QTBPdmStore::Create(arguments[0]), ExitCode::BadInput, "PDM store");
    Connect(arguments);
}

void ShellStoreCommands::Import(const ShellArguments& arguments)
{
    GetRequests();
    const bool hasFolder = arguments.size() > 1 && std::filesystem::is_directory(arguments.back());
    const std::string folder = hasFolder ? arguments.back() : "";
    for (std::size_t i = 0; i < arguments.size() - (hasFolder ? 1 : 0); ++i) {
        for (const CATIDOMDocument_var& spAnswer : StoreInput::ReadAnswers(arguments[i])) {
            QTBStoreImportReport report;
            HostSession::Require(m_Context.session.GetStore()->Import(spAnswer, folder, &report), ExitCode::BadInput,
                                 arguments[i]);
            m_Context.out << StoreInput::Describe(arguments[i], report);
        }
    }
}

void ShellStoreCommands::Query(const ShellArguments& arguments)
{
    const bool hasClass = !arguments.empty() && arguments[0].find('=') == std::string::npos;
    CATListValCATUnicodeString AttrNames;
    CATListValCATUnicodeString AttrValues;
    for (const std::string& text : Rest(arguments, hasClass ? 1 : 0)) {
        const auto [usName, usValue] = StoreInput::ParseAttribute(text);
        AttrNames.Append(usName);
        AttrValues.Append(usValue);
    }
    const unsigned char bNewestVersionsOnly = TRUE;
    const QTBIRepNodeCont_var spIRepNodeCont = m_Context.GetContainer();
    const CATListValCATBaseUnknown_var found = Run([&](QTBIPdmRequests& requests, CATIDOMDocument_var* pspAnswer) {
        return requests.Query(hasClass ? arguments[0].c_str() : "", AttrNames, AttrValues, bNewestVersionsOnly,
                              pspAnswer);
    });
    if (found.Size() == 0) {
        m_Context.out << "0 found\n";
    }
    HostSession::AddRoots(spIRepNodeCont, found);
}

void ShellStoreCommands::Get(const ShellArguments& arguments)
{
    const CATListValCATUnicodeString Keys = m_Context.GetKeys(arguments);
    Run([&Keys](QTBIPdmRequests& requests, CATIDOMDocument_var* pspAnswer) {
        return requests.GetItems(Keys, pspAnswer);
    });
}

void ShellStoreCommands::Refresh(const ShellArguments&)
{
    CATListValCATBaseUnknown_var nodes;
    HostSession::Require(m_Context.GetContainer()->GetAllRepNodes(&nodes), ExitCode::Failure, "window");
    std::vector<std::string> keys;
    for (const CATBaseUnknown_var& spNode : nodes) {
        CATUnicodeString usKey;
        unsigned char bIsDefault = FALSE;
        if (SUCCEEDED(QTBIRepNode_var(spNode)->GetPdmNodeKey(&usKey)) &&
            SUCCEEDED(QTBIRepNode_var(spNode)->IsRepDefaultNode(&bIsDefault)) && bIsDefault == FALSE) {
            keys.emplace_back(usKey.View());
        }
    }
    std::sort(keys.begin(), keys.end());
    keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
    CATListValCATUnicodeString Keys;
    for (const std::string& key : keys) {
        Keys.Append(key.c_str());
    }
    const QTBIPdmRequests_var spIPdmRequests = GetRequests();
    HostSession::Require(QTBRequestCommands::Run("GetItems",
                                                 [&Keys](QTBIPdmRequests& requests, CATIDOMDocument_var* pspAnswer) {
                                                     return requests.GetItems(Keys, pspAnswer);
                                                 }),
                         ExitCode::Failure, "PDM store");
    fmt::print(m_Context.out, "{} items read\n", Keys.Size());
}

void ShellStoreCommands::CheckOut(const ShellArguments& arguments)
{
    const CATListValCATUnicodeString Keys = m_Context.GetKeys(arguments);
    Run([&Keys](QTBIPdmRequests& requests, CATIDOMDocument_var* pspAnswer) {
        return requests.CheckOut(Keys, pspAnswer);
    });
}

void ShellStoreCommands::CheckIn(const ShellArguments& arguments)
{
    const CATListValCATUnicodeString Keys = m_Context.GetKeys({arguments[0]});
    CATListValCATUnicodeString FilePaths;
    if (arguments.size() > 1) {
        FilePaths.Append(arguments[1].c_str());
    }
    Run([&](QTBIPdmRequests& requests, CATIDOMDocument_var* pspAnswer) {
        return requests.CheckIn(Keys, FilePaths, pspAnswer);
    });
}

void ShellStoreCommands::Promote(const ShellArguments& arguments)
{
    const CATListValCATUnicodeString Keys = m_Context.GetKeys(arguments);
    Run([&Keys](QTBIPdmRequests& requests, CATIDOMDocument_var* pspAnswer) {
        return requests.Promote(Keys, pspAnswer);
    });
}

void ShellStoreCommands::Revise(const ShellArguments& arguments)
{
    const CATListValCATUnicodeString Keys = m_Context.GetKeys(arguments);
    Run([&Keys](QTBIPdmRequests& requests, CATIDOMDocument_var* pspAnswer) {
        return requests.Revise(Keys, pspAnswer);
    });
}

void ShellStoreCommands::Update(const ShellArguments& arguments)
{
    const CATListValCATUnicodeString Keys = m_Context.GetKeys({arguments[0]});
    const CATUnicodeString usXml = StoreInput::MakeAttributesXml(Rest(arguments, 1));
    Run([&](QTBIPdmRequests& requests, CATIDOMDocument_var* pspAnswer) {
        return requests.UpdateAttributes(Keys[1], usXml, pspAnswer);
    });
}

void ShellStoreCommands::CreateObject(const ShellArguments& arguments)
{
    const CATUnicodeString usXml = StoreInput::MakeAttributesXml(Rest(arguments, 1));
    Run([&](QTBIPdmRequests& requests, CATIDOMDocument_var* pspAnswer) {
        return requests.CreateObject(arguments[0].c_str(), "", usXml, pspAnswer);
    });
}

void ShellStoreCommands::Relate(const ShellArguments& arguments)
{
    GetRequests();
    const CATListValCATUnicodeString Keys = m_Context.GetKeys({arguments[1], arguments[2]});
    const CATUnicodeString usXml = StoreInput::MakeAttributesXml(Rest(arguments, 3));
    QTBIPdmObjNode_var ends[2];
    for (int i = 0; i < 2; ++i) {
        QTBIPdmNode_var spIPdmNode;
        unsigned char bFound = FALSE;
        m_Context.session.GetPdmNodeCont()->GetPdmNodeByKey(Keys[i + 1], &spIPdmNode, &bFound);
        ends[i] = spIPdmNode;
        if (ends[i] == NULL_var) {
            throw HostError(ExitCode::Usage,
                            fmt::format("the session holds no PDM object {}; get reads it", Keys[i + 1].View()));
        }
    }
    QTBICommunicationServices_var spICommunicationServices;
    HostSession::Require(QTBCommUtil::GetCommComponent(&spICommunicationServices), ExitCode::Failure, "PDM store");
    CATIDOMDocument_var spAnswer;
    HostSession::Require(
        spICommunicationServices->CreateRelation(arguments[0].c_str(), ends[0], ends[1], usXml, &spAnswer),
        ExitCode::Failure, "PDM store");
    TakeAnswer(spAnswer);
}

void ShellStoreCommands::Delete(const ShellArguments& arguments)
{
    const CATListValCATUnicodeString Keys = m_Context.GetKeys(arguments);
    Run([&Keys](QTBIPdmRequests& requests, CATIDOMDocument_var* pspAnswer) {
        return requests.DeleteItems(Keys, nullptr, pspAnswer);
    });
}

CATListValCATBaseUnknown_var ShellStoreCommands::Invoke(const char* function, const char* argument,
                                                        const CATUnicodeString& usValue)
{
    CATListValCATUnicodeString ArgNames;
    CATListValCATUnicodeString ArgValues;
    if (!usValue.IsEmpty()) {
        ArgNames.Append(argument);
        ArgValues.Append(usValue);
    }
    return Run([&](QTBIPdmRequests& requests, CATIDOMDocument_var* pspAnswer) {
        return requests.InvokeFunction(function, ArgNames, ArgValues, pspAnswer);
    });
}

void ShellStoreCommands::PrintVersions(const ShellArguments& arguments)
{
    Invoke("getVersions", "key", m_Context.GetKeys(arguments)[1]);
}

void ShellStoreCommands::PrintCheckedOut(const ShellArguments& arguments)
{
    if (Invoke("getCheckedOut", "user", arguments.empty() ? "" : arguments[0].c_str()).Size() == 0) {
        m_Context.out << "0 found\n";
    }
}

void ShellStoreCommands::Fetch(const ShellArguments& arguments)
{
    const CATListValCATUnicodeString Keys = m_Context.GetKeys({arguments[0]});
    HostSession::Require(GetRequests()->FetchFile(Keys[1], arguments[1].c_str()), ExitCode::Failure, "PDM store");
}
