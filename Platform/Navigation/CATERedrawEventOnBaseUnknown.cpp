#include "CATERedrawEventOnBaseUnknown.h"

#include "CATDictionary.h"
#include "CATMetaClass.h"
#include "CATNavigBox.h"
#include "CATTie.h"
#include "TIECATIRedrawEvent.h"

namespace {

// Registers the extension when the library is loaded and takes it back when it is unloaded.
class Registration
{
public:
    Registration()
        : m_pExtension(fct_RetrieveMetaObject("CATERedrawEventOnBaseUnknown",
                                              static_cast<int>(CATClassKind::CodeExtension),
                                              CATBaseUnknown::MetaObject(), "CATBaseUnknown", "External", 0))
    {
        CATFillDictionary(m_pExtension, CATIRedrawEvent::MetaObject(),
                          &CATCreateTie<TIECATIRedrawEvent<CATCodeTie<CATIRedrawEvent, CATERedrawEventOnBaseUnknown>>>,
                          0, 1);
    }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    ~Registration() { CATRemoveFromDictionary(m_pExtension, CATIRedrawEvent::MetaObject()); }

private:
    CATMetaClass* m_pExtension;
};

const Registration s_Registration;

} // namespace

void CATERedrawEventOnBaseUnknown::Redraw()
{
    CATNavigBox::RedrawEverywhere(CATBaseUnknown_var(this));
}
