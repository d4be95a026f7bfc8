#pragma once

#include <string>
#include <vector>

#include "QTBERepNodeOnRepNode.h"
#include "QTBFault.h"
#include "QTBINodeAttributes.h"
#include "QTBINodeRelations.h"
#include "QTBIRepNode.h"
#include "QTBMatchers.h"
#include "QTBTestLateType.h"
#include "TIEQTBIRepNode.h"

// Rep nodes that write down how they are to be shown instead of showing themselves; their window is what the test gives
// them. Operations fail on demand (see QTBFault).
class QTBRecordingRepNode : public QTBERepNodeOnRepNode
{
public:
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, GetRepNodeContainer)
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, FrmWindowPtrExists)
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, GetFrmEditorPtr)

    HRESULT Redraw(unsigned char* pbRecursive)
    {
        s_pHandedOver = pbRecursive;
        return Note("Redraw", pbRecursive);
    }
    HRESULT Preselect(unsigned char* pbEmptyPSO) { return Note("Preselect", pbEmptyPSO); }
    HRESULT Highlight(unsigned char* pbEmptyHSO, unsigned char* pbHighlightObjectOfRelation)
    {
        s_pHandedOver = pbHighlightObjectOfRelation;
        return Note("Highlight", pbEmptyHSO);
    }

    // What was called, in order: "key.Operation(flag)".
    inline static std::vector<std::string> s_Calls;
    // The pointer that the caller of the PDM node gave last.
    inline static const unsigned char* s_pHandedOver = nullptr;

private:
    HRESULT Note(const std::string& operation, const unsigned char* pbFlag)
    {
        CATUnicodeString usKey;
        QTBINodeAttributes_var(this)->GetKey(&usKey);
        s_Calls.push_back(std::string(usKey.View()) + "." + operation + (*pbFlag != FALSE ? "(TRUE)" : "(FALSE)"));
        return QTBFault::Strikes(*this, operation) ? QTBFault::Result() : S_OK;
    }
};

class QTBRecordingRepNodeType : public QTBTestLateType
{
public:
    QTBRecordingRepNodeType() : QTBTestLateType("QTBRecordingRepNode", "QTBRepNode")
    {
        Register<TIEQTBIRepNode, QTBIRepNode, QTBRecordingRepNode>();
        QTBRecordingRepNode::s_Calls.clear();
        QTBRecordingRepNode::s_pHandedOver = nullptr;
    }

    // A rep node of that key that shows the PDM node.
    QTBIRepNode_var Show(const CATBaseUnknown_var& spPdmNode, const char* key) const
    {
        const CATBaseUnknown_var spRepNode = Create();
        EXPECT_THAT(QTBINodeAttributes_var(spRepNode)->SetKey(key), Succeeds());
        EXPECT_THAT(QTBINodeRelations_var(spPdmNode)->AddRightNode("PdmToRep", spRepNode, 1, TRUE), Succeeds());
        return spRepNode;
    }
};
