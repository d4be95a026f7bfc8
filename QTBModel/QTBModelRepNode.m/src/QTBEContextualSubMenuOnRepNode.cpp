#include "QTBEContextualSubMenuOnRepNode.h"

#include "QTBCheck.h"
#include "QTBILinkToPsn.h"
#include "QTBIPdmNode.h"
#include "QTBIRepNode.h"

CATCmdAccess* QTBEContextualSubMenuOnRepNode::GetContextualSubMenu()
{
    QTB_SCOPE("QTBEContextualSubMenuOnRepNode::GetContextualSubMenu");
    try {
        PreselectRepNodes();
    } catch (const CATXHException& exception) {
        QTB_TRACE(exception.GetError()->GetNLSMessage());
    }
    return NULL;
}

void QTBEContextualSubMenuOnRepNode::PreselectRepNodes()
{
    const QTBIRepNode_var spIRepNodeOnThis(this);
    QTB_RAISE_INTERFACE(spIRepNodeOnThis);
    QTBIPdmNode_var spIPdmNodeForPreselect;
    if (FAILED(spIRepNodeOnThis->GetPdmNode(&spIPdmNodeForPreselect, FALSE, NULL)) ||
        spIPdmNodeForPreselect == NULL_var) {
        return;
    }
    const QTBILinkToPsn_var spILinkToPsnOnThis(this);
    QTB_RAISE_INTERFACE(spILinkToPsnOnThis);
    if (FAILED(spIPdmNodeForPreselect->PreselectRepNodes())) {
        QTB_TRACE("QTBEContextualSubMenuOnRepNode::GetContextualSubMenu -> "
                  "spIPdmNodeForPreselect->PreselectRepNodes !");
    }
}
