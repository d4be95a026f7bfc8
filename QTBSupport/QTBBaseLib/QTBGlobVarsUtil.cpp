#include "QTBGlobVarsUtil.h"

#include <deque>
#include <utility>

#include "CATError.h"
#include "CATInstantiateComponent.h"
#include "QTBCommUtil.h"
#include "QTBCommands.h"
#include "QTBDocUtil.h"
#include "QTBEnvVarUtil.h"
#include "QTBExchangedFiles.h"
#include "QTBICommunicationServices.h"
#include "QTBItemDialog.h"
#include "QTBLoadManager.h"
#include "QTBSchemaUtil.h"

namespace {

struct Session
{
    QTBIPdmNodeCont_var spIPdmNodeCont;
    int iActionIndex = 0;
    QTBPlaceToAdd placeToAdd = QTB_PLACE_TO_ADD_FRONT;
    unsigned char bShowRelations = TRUE;
    CATUnicodeString usSynchronizeContext;
    unsigned char bConfigurableNodeBehavior = FALSE;
    CATUnicodeString usExMapFolder;
    std::deque<QTBInfoListEntry> infoList;
};

// Kept to the end of the program: a session that nobody ended would otherwise be taken down when the libraries that
// implement its components may be gone already.
Session& TheSession()
{
    static auto* const s_pSession = new Session();
    return *s_pSession;
}

template <class T>
HRESULT Give(const T& value, T* pValue)
{
    if (pValue == nullptr) {
        return E_FAIL;
    }
    *pValue = value;
    return S_OK;
}

template <class T>
HRESULT Take(const T& value, T& member)
{
    member = value;
    return S_OK;
}

QTBInfoListEntry::Kind GetKind(const CATError& error)
{
    if (error.IsAKindOf("QTBInformation")) {
        return QTBInfoListEntry::Information;
    }
    return error.IsAKindOf("QTBWarning") ? QTBInfoListEntry::Warning : QTBInfoListEntry::Error;
}

HRESULT AddToInfoList(QTBInfoListEntry::Kind kind, const CATUnicodeString& usText)
{
    std::deque<QTBInfoListEntry>& infoList = TheSession().infoList;
    if (infoList.size() == QTBGlobVarsUtil::MAX_INFO_LIST_ENTRIES) {
        infoList.pop_front();
    }
    infoList.push_back({kind, usText});
    return S_OK;
}

} // namespace

HRESULT QTBGlobVarsUtil::GetGlobalPdmNodeContainer(QTBIPdmNodeCont_var* pspIPdmNodeCont)
{
    if (pspIPdmNodeCont == nullptr) {
        return E_FAIL;
    }
    QTBIPdmNodeCont_var& spIPdmNodeCont = TheSession().spIPdmNodeCont;
    if (spIPdmNodeCont == NULL_var) {
        void* pCreated = nullptr;
        const HRESULT hr = ::CATInstantiateComponent("QTBPdmNodeCont", IID_QTBIPdmNodeCont, &pCreated);
        if (FAILED(hr)) {
            return hr;
        }
        spIPdmNodeCont = QTBIPdmNodeCont_var::Adopt(static_cast<QTBIPdmNodeCont*>(pCreated));
    }
    *pspIPdmNodeCont = spIPdmNodeCont;
    return S_OK;
}

HRESULT QTBGlobVarsUtil::IncActionIndex()
{
    ++TheSession().iActionIndex;
    return S_OK;
}

HRESULT QTBGlobVarsUtil::GetCurrentActionIndex(int* pActionIndex)
{
    return Give(TheSession().iActionIndex, pActionIndex);
}

HRESULT QTBGlobVarsUtil::SetCurrentActionIndex(int iActionIndex)
{
    TheSession().iActionIndex = iActionIndex;
    return S_OK;
}

HRESULT QTBGlobVarsUtil::GetAddNewNodeRelationsAt(QTBPlaceToAdd* pPlaceToAdd)
{
    return Give(TheSession().placeToAdd, pPlaceToAdd);
}

HRESULT QTBGlobVarsUtil::SetAddNewNodeRelationsAt(QTBPlaceToAdd placeToAdd)
{
    return Take(placeToAdd, TheSession().placeToAdd);
}

HRESULT QTBGlobVarsUtil::GetShowRelations(unsigned char* pbShowRelations)
{
    return Give(TheSession().bShowRelations, pbShowRelations);
}

HRESULT QTBGlobVarsUtil::SetShowRelations(unsigned char bShowRelations)
{
    return Take(bShowRelations, TheSession().bShowRelations);
}

HRESULT QTBGlobVarsUtil::GetSynchronizeContext(CATUnicodeString* pusContext)
{
    return Give(TheSession().usSynchronizeContext, pusContext);
}

HRESULT QTBGlobVarsUtil::SetSynchronizeContext(const CATUnicodeString& usContext)
{
    return Take(usContext, TheSession().usSynchronizeContext);
}

HRESULT QTBGlobVarsUtil::GetConfigurableCatiaNodeBehaviorState(unsigned char* pbState)
{
    return Give(TheSession().bConfigurableNodeBehavior, pbState);
}

HRESULT QTBGlobVarsUtil::SetConfigurableCatiaNodeBehaviorState(unsigned char bState)
{
    return Take(bState, TheSession().bConfigurableNodeBehavior);
}

HRESULT QTBGlobVarsUtil::GetExMapFolder(CATUnicodeString* pusFolder)
{
    CATUnicodeString usFolder = TheSession().usExMapFolder;
    if (usFolder.IsEmpty()) {
        // A variable that is not set leaves the folder empty.
        QTBEnvVarUtil::GetOptionalEnvVarValue("QTB_EXMAP_FOLDER", &usFolder);
    }
    return Give(usFolder, pusFolder);
}

HRESULT QTBGlobVarsUtil::SetExMapFolder(const CATUnicodeString& usFolder)
{
    return Take(usFolder, TheSession().usExMapFolder);
}

HRESULT QTBGlobVarsUtil::AddMessageToInfoListDialog(CATError* pError)
{
    if (pError == nullptr) {
        return E_FAIL;
    }
    // Hands the error over to its owner, whatever happens then; the result is not needed.
    CATError::GetReturn(2, pError, nullptr, __FILE__, __LINE__);
    return AddToInfoList(GetKind(*pError), pError->GetNLSMessage());
}

HRESULT QTBGlobVarsUtil::AddErrorToInfoListDialog(const CATUnicodeString& usText)
{
    return AddToInfoList(QTBInfoListEntry::Error, usText);
}

HRESULT QTBGlobVarsUtil::GetInfoListEntries(CATListValQTBInfoListEntry* pEntries)
{
    if (pEntries == nullptr) {
        return E_FAIL;
    }
    pEntries->RemoveAll();
    for (const QTBInfoListEntry& entry : TheSession().infoList) {
        pEntries->Append(entry);
    }
    return S_OK;
}

HRESULT QTBGlobVarsUtil::ClearInfoList()
{
    TheSession().infoList.clear();
    return S_OK;
}

void QTBGlobVarsUtil::EndSession()
{
    QTBDocUtil::CloseAllQtbDocuments();
    if (TheSession().spIPdmNodeCont != NULL_var) {
        // What cannot be taken out of the graph any more goes with the container.
        TheSession().spIPdmNodeCont->Cleanup();
    }
    // Replaced before it is destroyed: what dies with it may ask for the session.
    const Session ended = std::exchange(TheSession(), Session());
    QTBCommUtil::SetCommComponent(NULL_var);
    QTBCommands::RemoveHeaders();
    QTBItemDialog::SetHandler(nullptr);
    g_QTBLoadManager.Reset();
    QTBExchangedFiles::Forget();
    QTBSchemaUtil::ReleaseReplacedSchemas();
}
