#pragma once

#include <cstddef>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "HostSession.h"
#include "SessionStep.h"
#include "Shell.h"

class QTBPdmStore;

// Plays the steps of a session: lines of the shell, and some that the shell has no command for:
//
//   remove KEY            takes an item out of the graph
//   prune KEY             marks the children of the item's rep nodes and cleans them up
//   update stored|new     which relations an update of the current window looks at
//   product add|remove|number|close PARTNUMBER [PARTNUMBER]
//                         changes a product that is open, or closes its document
//   store REQUEST ...     a request to a PDM store, whose answer the session reads
class SessionPlayer
{
public:
    // The folder takes the files of the steps and the store.
    explicit SessionPlayer(const std::string& folder);
    SessionPlayer(const SessionPlayer&) = delete;
    SessionPlayer& operator=(const SessionPlayer&) = delete;
    ~SessionPlayer();

    // What is broken after the step; empty when nothing is.
    std::string Play(const SessionStep& step);

    static bool IsShellLine(const std::string& line);

    // A step that ends the session and begins another one in the same process, for PlayAll only. What a process keeps
    // from one session to the next, such as the counter of rep node keys, decides where nodes stand.
    static SessionStep NextSession() { return {"next session", "", ""}; }

    // Plays a whole session, or several. What was broken, and behind which step; empty when nothing was.
    static std::string PlayAll(const SessionSteps& steps, const std::string& folder);

private:
    using Words = std::vector<std::string>;

    // One session, from a step to the next NextSession or the end, where pStep is left.
    static std::string PlayOne(const SessionSteps& steps, std::size_t* pStep, const std::string& folder);

    void Do(const SessionStep& step);
    void Remove(const Words& words) const;
    void Prune(const Words& words) const;
    void SetUpdateMode(const Words& words) const;
    static void ChangeProduct(const Words& words);
    void AskStore(const Words& words);

    std::string m_Folder;
    std::ostringstream m_Output;
    // The worst of the answers so far.
    QTBAnswers m_Answers = QTBAnswers::Agree;
    std::unique_ptr<HostSession> m_pSession;
    std::unique_ptr<Shell> m_pShell;
    std::unique_ptr<QTBPdmStore> m_pStore;
};
