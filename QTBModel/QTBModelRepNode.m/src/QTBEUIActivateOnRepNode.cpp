#include "QTBEUIActivateOnRepNode.h"

CATString QTBEUIActivateOnRepNode::GetWorkshopName()
{
    return m_WorkshopName;
}

CATString QTBEUIActivateOnRepNode::GetCommandName()
{
    return m_CommandName;
}
