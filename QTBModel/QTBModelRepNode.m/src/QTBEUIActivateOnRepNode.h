#pragma once

#include "CATExtIUIActivate.h"

// CATIUIActivate on the late type QTBRepNode: a double click on a rep node activates the workshop of the PDM windows
// and selects the node. Everything else is as the application has it.
class QTBEUIActivateOnRepNode : public CATExtIUIActivate
{
public:
    CATString GetWorkshopName() override;
    CATString GetCommandName() override;

private:
    CATString m_WorkshopName = "QTBPdmWks";
    CATString m_CommandName = "CATAfrSelectHdr";
};
