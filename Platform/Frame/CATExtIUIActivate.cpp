#include "CATExtIUIActivate.h"

#include <utility>

#include "CATApplicationFrame.h"
#include "CATCommandHeaderRegister.h"
#include "CATFrmEditor.h"
#include "CATInterface_var.h"

HRESULT CATExtIUIActivate::Activate()
{
    CATFrmEditor* pEditor = CATFrmEditor::GetCurrentEditor();
    if (pEditor == nullptr) {
        return E_FAIL;
    }
    const CATString workshop = GetWorkshopName();
    if (IsActive() == FALSE) {
        m_FormerWorkshop = pEditor->GetWorkshop();
        m_bActivated = true;
    }
    if (!workshop.IsEmpty()) {
        pEditor->ActivateWorkshop(workshop);
    }
    const CATString command = GetCommandName();
    return command.IsEmpty() ? S_OK
                             : CATApplicationFrame::GetFrame()->GetCommandHeaders().StartCommand(
                                   command.ConvertToChar(), CATBaseUnknown_var(this));
}

HRESULT CATExtIUIActivate::Deactivate()
{
    const bool bWasActive = IsActive() != FALSE;
    m_bActivated = false;
    if (!bWasActive) {
        return S_FALSE;
    }
    CATFrmEditor::GetCurrentEditor()->ActivateWorkshop(m_FormerWorkshop);
    return S_OK;
}

unsigned char CATExtIUIActivate::IsActive()
{
    const CATFrmEditor* pEditor = CATFrmEditor::GetCurrentEditor();
    const CATString workshop = GetWorkshopName();
    return m_bActivated && pEditor != nullptr && (workshop.IsEmpty() || pEditor->GetWorkshop() == workshop) ? TRUE
                                                                                                            : FALSE;
}

CATString CATExtIUIActivate::GetWorkshopName()
{
    return {};
}

CATString CATExtIUIActivate::GetCommandName()
{
    return {};
}
