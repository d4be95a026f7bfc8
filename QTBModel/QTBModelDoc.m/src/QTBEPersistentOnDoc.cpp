#include "QTBEPersistentOnDoc.h"

#include <memory>

#include "CATApplicationFrame.h"
#include "CATDlgDocument.h"
#include "CATDlgNotify.h"
#include "CATMsgCatalog.h"
#include "QTBCheck.h"

namespace {

constexpr const char* CATALOG = "QTBUserPrompts";
// An information dialog with one button that blocks the application.
constexpr unsigned int NOTICE_STYLE = 0x4000200;

const char* ToText(unsigned char bFlag)
{
    return bFlag != FALSE ? "TRUE" : "FALSE";
}

} // namespace

unsigned char QTBEPersistentOnDoc::Dirty()
{
    QTB_SCOPE("QTBEPersistentOnDoc::Dirty");
    return FALSE;
}

void QTBEPersistentOnDoc::Save()
{
    QTB_SCOPE("QTBEPersistentOnDoc::Save");
    ShowNotice();
}

void QTBEPersistentOnDoc::SaveAs(const CATUnicodeString& storageName, unsigned char bBecameCurrent)
{
    QTB_SCOPE("QTBEPersistentOnDoc::SaveAs");
    QTB_TRACE("QTBEPersistentOnDoc::SaveAs -> iStoragePrintableName:" << storageName << ", iBecameCurrent:["
                                                                      << ToText(bBecameCurrent) << "]");
    ShowNotice();
}

void QTBEPersistentOnDoc::SaveAs_B(void*)
{
    QTB_SCOPE("QTBEPersistentOnDoc::SaveAs_B");
    ShowNotice();
}

void QTBEPersistentOnDoc::Load(const CATUnicodeString& storageName, unsigned char bReadOnly)
{
    QTB_SCOPE("QTBEPersistentOnDoc::Load");
    QTB_TRACE("QTBEPersistentOnDoc::Load -> iStoragePrintableName:" << storageName << ", iReadOnly:["
                                                                    << ToText(bReadOnly) << "]");
}

void QTBEPersistentOnDoc::Load_B(void*)
{
    QTB_SCOPE("QTBEPersistentOnDoc::Load_B");
}

void QTBEPersistentOnDoc::ShowNotice()
{
    const CATUnicodeString usMessage = CATMsgCatalog::BuildMessage(CATALOG, "SavingQTBDocumentsNotYetImplemented");
    const CATUnicodeString usTitle = CATMsgCatalog::BuildMessage(CATALOG, "SavingQTBDocumentsNotYetImplementedTitle");
    auto pNotify =
        std::make_unique<CATDlgNotify>(CATApplicationFrame::GetFrame()->GetApplicationDocument(), "", NOTICE_STYLE);
    pNotify->DisplayBlocked(usMessage, usTitle);
    pNotify->RequestDelayedDestruction();
    static_cast<void>(pNotify.release());
}
