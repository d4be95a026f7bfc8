#pragma once

#include <functional>
#include <memory>

#include "CATBaseUnknown.h"
#include "CATInterface_var.h"
#include "QTBPdmStore.h"
#include "QTBPdmStoreExport.h"

// A PDM store as the PDM system of a session: a component of the late type QTBPdmStore, which answers
// QTBICommunicationServices and QTBIPdmRequests. The store is closed when the last handle is gone.
class QTBPDMSTORE_API QTBPdmStoreComponent : public CATBaseUnknown
{
public:
    // Opens a store (QTBPdmStore::Open) for the session. QTBCommUtil::SetCommComponent connects the session with it.
    static HRESULT Create(const std::string& path, const QTBPdmStore::Options& options, CATBaseUnknown_var* pspStore);

    ~QTBPdmStoreComponent() override;

    QTBPdmStore& GetStore() { return *m_pStore; }

    // Makes a request of the store and a document of its answer; *pspAnswer stays as it was when it fails. Called by
    // the extensions.
    HRESULT Answer(const std::function<HRESULT(QTBPdmStore&, const QTBPdmStore::Receiver&)>& request,
                   CATIDOMDocument_var* pspAnswer);

private:
    explicit QTBPdmStoreComponent(std::unique_ptr<QTBPdmStore> pStore);

    std::unique_ptr<QTBPdmStore> m_pStore;
};
