#include "QTBPdmStoreComponent.h"

#include <string>
#include <utility>

#include "CATDictionary.h"
#include "CATLateType.h"
#include "CATMetaClass.h"
#include "QTBECommunicationServicesOnPdmStore.h"
#include "QTBEPdmRequestsOnPdmStore.h"
#include "QTBGlobVarsUtil.h"
#include "QTBXmlUtil.h"
#include "TIEQTBICommunicationServices.h"
#include "TIEQTBIPdmRequests.h"

namespace {

constexpr const char* LATE_TYPE = "QTBPdmStore";

// Registers an extension when the library is loaded and takes it back when it is unloaded.
template <template <class...> class Tie, class Interface, class Extension>
class Registration
{
public:
    explicit Registration(const char* extensionName)
        : m_pExtension(fct_RetrieveMetaObject(extensionName, static_cast<int>(CATClassKind::DataExtension),
                                              CATBaseUnknown::MetaObject(), LATE_TYPE, "External", 0))
    {
        CATFillDictionary(m_pExtension, Interface::MetaObject(), &CATCreateTie<Tie<CATDataTie<Interface, Extension>>>,
                          0, 1);
    }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    ~Registration() { CATRemoveFromDictionary(m_pExtension, Interface::MetaObject()); }

private:
    CATMetaClass* m_pExtension;
};

const Registration<TIEQTBICommunicationServices, QTBICommunicationServices, QTBECommunicationServicesOnPdmStore>
    s_CommunicationServices("QTBECommunicationServicesOnPdmStore");
const Registration<TIEQTBIPdmRequests, QTBIPdmRequests, QTBEPdmRequestsOnPdmStore>
    s_PdmRequests("QTBEPdmRequestsOnPdmStore");

// Whether the session's PDM graph holds the item.
bool IsInPdmGraph(const CATUnicodeString& usKey)
{
    QTBIPdmNodeCont_var spIPdmNodeCont;
    QTBIPdmNode_var spIPdmNode;
    unsigned char bNodeFound = FALSE;
    return SUCCEEDED(QTBGlobVarsUtil::GetGlobalPdmNodeContainer(&spIPdmNodeCont)) &&
           SUCCEEDED(spIPdmNodeCont->GetPdmNodeByKey(usKey, &spIPdmNode, &bNodeFound)) && bNodeFound != FALSE;
}

} // namespace

HRESULT QTBPdmStoreComponent::Create(const std::string& path, const QTBPdmStore::Options& options,
                                     CATBaseUnknown_var* pspStore)
{
    if (pspStore == nullptr) {
        return E_POINTER;
    }
    std::unique_ptr<QTBPdmStore> pStore;
    if (const HRESULT hr = QTBPdmStore::Open(path, options, &pStore); FAILED(hr)) {
        return hr;
    }
    pStore->SetSessionKeys(&IsInPdmGraph);
    *pspStore = CATBaseUnknown_var::Adopt(new QTBPdmStoreComponent(std::move(pStore)));
    return S_OK;
}

QTBPdmStoreComponent::QTBPdmStoreComponent(std::unique_ptr<QTBPdmStore> pStore)
    : CATBaseUnknown(CATLateType::Declare(LATE_TYPE)), m_pStore(std::move(pStore))
{
}

QTBPdmStoreComponent::~QTBPdmStoreComponent() = default;

HRESULT QTBPdmStoreComponent::Answer(const std::function<HRESULT(QTBPdmStore&, const QTBPdmStore::Receiver&)>& request,
                                     CATIDOMDocument_var* pspAnswer)
{
    if (pspAnswer == nullptr) {
        return E_POINTER;
    }
    std::string answer;
    const HRESULT hr = request(*m_pStore, [&answer](std::string_view piece) { answer.append(piece); });
    // The store wrote the text itself and checked what it wrote it from.
    return FAILED(hr) ? hr : QTBXmlUtil::GetTrustedDomDocument(answer, pspAnswer);
}
