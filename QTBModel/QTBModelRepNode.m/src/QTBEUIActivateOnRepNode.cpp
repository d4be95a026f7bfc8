#include "QTBEUIActivateOnRepNode.h"

#include "QTBCheck.h"

CATString QTBEUIActivateOnRepNode::GetWorkshopName()
{
    QTB_SCOPE("QTBEUIActivateOnRepNode::GetWorkshopName");
    return m_WorkshopName;
}

CATString QTBEUIActivateOnRepNode::GetCommandName()
{
    QTB_SCOPE("QTBEUIActivateOnRepNode::GetCommandName");
    return m_CommandName;
}
