#include "QTBEQtbFrmWindowOnFrmWindow.h"

#include "CATDictionary.h"
#include "CATMetaClass.h"
#include "QTBFrmWindow.h"
#include "TIEQTBIQtbFrmWindow.h"

namespace {

// Registers the extension when the library is loaded and takes it back when it is unloaded.
class Registration
{
public:
    Registration()
        : m_pExtension(fct_RetrieveMetaObject("QTBEQtbFrmWindowOnFrmWindow",
                                              static_cast<int>(CATClassKind::DataExtension),
                                              CATBaseUnknown::MetaObject(), "QTBFrmWindow", "External", 0))
    {
        CATFillDictionary(m_pExtension, QTBIQtbFrmWindow::MetaObject(),
                          &CATCreateTie<TIEQTBIQtbFrmWindow<CATDataTie<QTBIQtbFrmWindow, QTBEQtbFrmWindowOnFrmWindow>>>,
                          0, 1);
    }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    ~Registration() { CATRemoveFromDictionary(m_pExtension, QTBIQtbFrmWindow::MetaObject()); }

private:
    CATMetaClass* m_pExtension;
};

const Registration s_Registration;

} // namespace

HRESULT QTBEQtbFrmWindowOnFrmWindow::GetFrmWindowPtr(CATFrmWindow** ppFrmWindow)
{
    if (ppFrmWindow == nullptr) {
        return E_FAIL;
    }
    *ppFrmWindow = static_cast<QTBFrmWindow*>(GetImpl())->GetFrmWindow();
    return *ppFrmWindow != nullptr ? S_OK : E_FAIL;
}
