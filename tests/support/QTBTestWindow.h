#pragma once

#include <string>
#include <vector>

#include "CATFrmWindow.h"
#include "CATListValCATBaseUnknown_var.h"
#include "QTBIRepNode.h"
#include "QTBIRepNodeCont.h"

// A PDM window with its document and rep node container, opened as a command opens it. Closed by the end of the session
// at the latest.
class QTBTestWindow
{
public:
    QTBTestWindow();

    CATFrmWindow* GetFrmWindow() const { return m_pFrmWindow; }
    const QTBIRepNodeCont_var& GetCont() const { return m_spIRepNodeCont; }

    void Close();

    // Shows the tree of a PDM node, expanded along the relations, left to right.
    void Show(const CATBaseUnknown_var& spPdmNode, const std::vector<const char*>& relationNames) const;

    // The first rep node of a PDM node in this window; empty when there is none.
    QTBIRepNode_var Find(const CATBaseUnknown_var& spPdmNode) const;

    // PDM keys of the nodes that rep nodes stand for.
    static std::vector<std::string> PdmKeysOf(const CATListValCATBaseUnknown_var& repNodes);

    // Display strings of the roots of the window's tree.
    std::vector<std::string> GetRootTexts() const;

private:
    CATFrmWindow* m_pFrmWindow = nullptr;
    QTBIRepNodeCont_var m_spIRepNodeCont;
};
