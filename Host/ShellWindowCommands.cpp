#include "ShellWindowCommands.h"

#include <ostream>

#include <fmt/format.h>
#include <fmt/ostream.h>

#include "CATApplicationFrame.h"
#include "CATDlgNotice.h"
#include "CATFrmLayout.h"
#include "HostText.h"
#include "QTBDocUtil.h"
#include "QTBGlobVarsUtil.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRequests.h"
#include "QTBIRepNodeCont.h"
#include "QTBRequestCommands.h"

ShellGroup ShellWindowCommands::GetWindowGroup()
{
    return {
        "Windows",
        {
            {"open", "[KEY...]", "open another PDM window, on these objects", 0, MAX_ARGUMENTS,
             ShellRun(this, &ShellWindowCommands::Open)},
            {"windows", "", "list the windows; the current one is marked", 0, 0,
             ShellRun(this, &ShellWindowCommands::List)},
            {"window", "NUMBER", "make a window the current one", 1, 1, ShellRun(this, &ShellWindowCommands::Activate)},
            {"close", "", "close the current window", 0, 0, ShellRun(this, &ShellWindowCommands::Close)},
            {"roots", "KEY...", "make PDM objects the roots of the current window", 1, MAX_ARGUMENTS,
             ShellRun(this, &ShellWindowCommands::SetRoots)},
        }};
}

ShellGroup ShellWindowCommands::GetSessionGroup()
{
    return {"Session",
            {
                {"answer", "FILE...", "read PDM answers and let the windows follow", 1, MAX_ARGUMENTS,
                 ShellRun(this, &ShellWindowCommands::ReadAnswers)},
                {"messages", "", "print the information list and empty it", 0, 0,
                 ShellRun(this, &ShellWindowCommands::PrintMessages)},
                {"notices", "", "print the notices that were shown, and forget them", 0, 0,
                 ShellRun(this, &ShellWindowCommands::PrintNotices)},
                {"language", "NAME", "language of messages and display names", 1, 1,
                 [this](const ShellArguments& arguments) { m_Context.session.SetLanguage(arguments[0]); }},
            }};
}

QTBIPdmNode_var ShellWindowCommands::GetObject(const std::string& key)
{
    const auto find = [this, &key] {
        QTBIPdmNode_var spIPdmNode;
        unsigned char bFound = FALSE;
        m_Context.session.GetPdmNodeCont()->GetPdmNodeByKey(key.c_str(), &spIPdmNode, &bFound);
        return spIPdmNode;
    };
    QTBIPdmNode_var spIPdmNode = find();
    if (spIPdmNode == NULL_var && m_Context.session.GetStore() != nullptr) {
        CATListValCATUnicodeString Keys;
        Keys.Append(key.c_str());
        HostSession::Require(
            QTBRequestCommands::Run("GetItems",
                                    [&Keys](QTBIPdmRequests& requests, CATIDOMDocument_var* pspAnswer) {
                                        return requests.GetItems(Keys, pspAnswer);
                                    }),
            ExitCode::Failure, key);
        spIPdmNode = find();
    }
    if (QTBIPdmObjNode_var(spIPdmNode) == NULL_var) {
        throw HostError(ExitCode::Usage, "there is no PDM object with the key " + key);
    }
    return spIPdmNode;
}

void ShellWindowCommands::Open(const ShellArguments& arguments)
{
    CATListValCATBaseUnknown_var pdmNodes;
    for (const std::string& key : arguments) {
        pdmNodes.Append(GetObject(key));
    }
    HostSession::Require(QTBDocUtil::CreateNewQtbDocument(nullptr, nullptr), ExitCode::Failure, "PDM window");
    if (pdmNodes.Size() > 0) {
        HostSession::ReplaceRoots(m_Context.GetContainer(), pdmNodes);
    }
}

void ShellWindowCommands::List(const ShellArguments&)
{
    const CATFrmLayout* pLayout = CATFrmLayout::GetCurrentLayout();
    int number = 0;
    for (const CATFrmWindow* pWindow : pLayout->GetWindowList()) {
        fmt::print(m_Context.out, "{} {} {}\n", pWindow == pLayout->GetCurrentWindow() ? '*' : ' ', ++number,
                   pWindow->GetTitle().View());
    }
}

void ShellWindowCommands::Activate(const ShellArguments& arguments)
{
    CATFrmLayout* pLayout = CATFrmLayout::GetCurrentLayout();
    const std::size_t number = ShellContext::ToNumber(arguments[0]);
    if (number == 0 || number > static_cast<std::size_t>(pLayout->GetWindowList().Size())) {
        throw HostError(ExitCode::Usage, "there is no window " + arguments[0] + "; windows lists them");
    }
    pLayout->SetCurrentWindow(pLayout->GetWindowList()[static_cast<int>(number)]);
}

void ShellWindowCommands::Close(const ShellArguments&)
{
    CATFrmWindow* pWindow = m_Context.GetWindow();
    m_Context.ForgetNodes();
    CATFrmLayout::GetCurrentLayout()->CloseWindow(pWindow);
}

void ShellWindowCommands::SetRoots(const ShellArguments& arguments)
{
    m_Context.GetContainer();
    CATListValCATBaseUnknown_var pdmNodes;
    for (const std::string& key : arguments) {
        pdmNodes.Append(GetObject(key));
    }
    m_Context.menu.Close();
    HostSession::ReplaceRoots(m_Context.GetContainer(), pdmNodes);
}

void ShellWindowCommands::ReadAnswers(const ShellArguments& arguments)
{
    for (const std::string& file : arguments) {
        if (const std::string leftOut = m_Context.session.ReadAnswer(file); !leftOut.empty()) {
            fmt::print(m_Context.out, "{}\n", leftOut);
        }
    }
}

void ShellWindowCommands::PrintMessages(const ShellArguments&)
{
    CATListValQTBInfoListEntry entries;
    QTBGlobVarsUtil::GetInfoListEntries(&entries);
    for (const QTBInfoListEntry& entry : entries) {
        fmt::print(m_Context.out, "{}: {}\n", HostText::ToText(entry.kind), entry.text.View());
    }
    QTBGlobVarsUtil::ClearInfoList();
}

void ShellWindowCommands::PrintNotices(const ShellArguments&)
{
    for (const CATDlgNotice& notice : CATApplicationFrame::GetFrame()->GetNotices()) {
        fmt::print(m_Context.out, "{}: {}\n", notice.title.View(), notice.message.View());
    }
    CATApplicationFrame::GetFrame()->ForgetNotices();
}
