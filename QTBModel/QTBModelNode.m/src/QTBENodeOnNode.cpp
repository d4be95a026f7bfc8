#include "QTBENodeOnNode.h"

#include "CATUnicodeString.h"
#include "QTBCheck.h"
#include "QTBIPdmNode.h"
#include "QTBIRepNode.h"

HRESULT QTBENodeOnNode::GetNodeDescriptionString(CATUnicodeString* pusNodeDescriptionString)
{
    QTB_SCOPE("QTBENodeOnNode::GetNodeDescriptionString");
    QTB_ASSERT(pusNodeDescriptionString != NULL);

    CATUnicodeString usText("?");
    if (const QTBIPdmNode_var spIPdmNodeOnThis(this); spIPdmNodeOnThis != NULL_var) {
        if (FAILED(spIPdmNodeOnThis->GetDescriptionString(&usText))) {
            QTB_TRACE("QTBENodeOnNode::GetNodeDescriptionString -> spIPdmNodeOnThis->GetDescriptionString !");
        }
    } else if (const QTBIRepNode_var spIRepNodeOnThis(this); spIRepNodeOnThis != NULL_var) {
        if (FAILED(spIRepNodeOnThis->GetDisplayString(&usText))) {
            QTB_TRACE("QTBENodeOnNode::GetNodeDescriptionString -> spIRepNodeOnThis->GetDisplayString !");
        }
    }
    *pusNodeDescriptionString = usText;
    return QTB_SUCCESS;
}

HRESULT QTBENodeOnNode::GetPdmClass(CATUnicodeString* pusPdmClass)
{
    QTB_SCOPE("QTBENodeOnNode::GetPdmClass");
    QTB_ASSERT(pusPdmClass != NULL);

    CATUnicodeString usText("?");
    if (const QTBIPdmNode_var spIPdmNodeOnThis(this); spIPdmNodeOnThis != NULL_var) {
        if (FAILED(spIPdmNodeOnThis->GetClassName(&usText))) {
            QTB_TRACE("QTBENodeOnNode::GetPdmClass -> spIPdmNodeOnThis->GetClassName !");
        }
    } else if (const QTBIRepNode_var spIRepNodeOnThis(this); spIRepNodeOnThis != NULL_var) {
        if (FAILED(spIRepNodeOnThis->GetPdmNodeClassName(&usText))) {
            QTB_TRACE("QTBENodeOnNode::GetPdmClass -> spIRepNodeOnThis->GetPdmNodeClassName !");
        }
    }
    *pusPdmClass = usText;
    return QTB_SUCCESS;
}
