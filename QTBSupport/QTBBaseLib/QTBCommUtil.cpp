#include "QTBCommUtil.h"

#include "CATError.h"
#include "QTBICommunicationServices.h"
#include "QTBMessageUtil.h"

namespace {

QTBICommunicationServices_var& Connection()
{
    static QTBICommunicationServices_var s_spICommunicationServices;
    return s_spICommunicationServices;
}

} // namespace

HRESULT QTBCommUtil::GetCommComponent(QTBICommunicationServices_var* pspICommunicationServices)
{
    if (pspICommunicationServices == nullptr) {
        return E_POINTER;
    }
    if (Connection() == NULL_var) {
        return CATError::GetReturn(2, QTBMessageUtil::NoPdmConnectionError(), nullptr, __FILE__, __LINE__);
    }
    *pspICommunicationServices = Connection();
    return S_OK;
}

void QTBCommUtil::SetCommComponent(const QTBICommunicationServices_var& spICommunicationServices)
{
    Connection() = spICommunicationServices;
}
