#include "CATEInitOnPrdDocument.h"

#include "CATPrdDocument.h"
#include "CATPrdReference.h"

void CATEInitOnPrdDocument::Init(unsigned char)
{
    CATPrdDocument* pDocument = CATPrdDocument::FromComponent(this);
    if (pDocument != nullptr && pDocument->GetRoot() == nullptr) {
        pDocument->MakeRoot();
    }
}

CATBaseUnknown* CATEInitOnPrdDocument::GetRootContainer(const char* interfaceName)
{
    const CATPrdDocument* pDocument = CATPrdDocument::FromComponent(this);
    return pDocument != nullptr && pDocument->GetRoot() != nullptr
               ? pDocument->GetRoot()->CATBaseUnknown::QueryInterface(interfaceName)
               : nullptr;
}
