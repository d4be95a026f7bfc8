#pragma once

#include "CATInterface_var.h"
#include "CATNodeExtension.h"
#include "CATUnicodeString.h"

class CATIGraphNode;
class QTBIRepNode;
using CATIGraphNode_var = CATInterface_var<CATIGraphNode>;
using QTBIRepNode_var = CATInterface_var<QTBIRepNode>;

// CATINavigModify on the late type QTBRepNode_node, the navigation nodes of rep nodes: icon, state mark and tooltip of
// a rep node in the tree of its window.
class QTBENavigModifyOnRepNode_node : public CATNodeExtension
{
public:
    // Gives the navigation node the icon of the rep node's PDM class and the mark of its state, and keeps the tooltip.
    // The default root keeps the tree's own look. What fails is written to the debug output and ends the update; what
    // was set until then stays.
    void UpdateElem(CATNavigInstance* pInstance) override;

    // The tooltip of the last update takes the place of the text, if there is one. S_OK always.
    HRESULT ModifyShortHelp(CATUnicodeString& ioShortHelp) override;

    // Steps of an update, for this class and its tests.

    // The icon of the PDM class; the default icon for a class without one and for a rep node without PDM node.
    static HRESULT GetIconForNode(const QTBIRepNode_var& spIRepNode, CATUnicodeString* pusIconName);
    // Whether a file of the CAD system has changes that the PDM system does not have. FALSE for any other node. Where
    // that cannot be found out an archive counts as unchanged, any other file as changed.
    static HRESULT PdmNodeIsDirtyCatiaFileNode(const QTBIRepNode_var& spIRepNode, unsigned char* pbDirtyCatiaFile);
    // Whether the user may not edit the object. pbEditOrCheckOut, which may be NULL, receives whether the user may edit
    // it or check it out.
    static HRESULT PdmNodeIsReadOnly(const QTBIRepNode_var& spIRepNode, unsigned char* pbIsReadOnly,
                                     unsigned char* pbEditOrCheckOut);
    // Keeps the value of the attribute that the PDM class names for the tooltip; without one the former tooltip stays.
    HRESULT UpdateTooltipString(const QTBIRepNode_var& spIRepNode);

private:
    void UpdateElemGuarded(CATNavigInstance* pInstance);
    static void UpdateStateMark(const QTBIRepNode_var& spIRepNode, const CATIGraphNode_var& spIGraphNodeOnThis);

    CATUnicodeString m_usTooltip;
};
