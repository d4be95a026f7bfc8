#include "QTBECSOFilterOnRepNode.h"

#include <algorithm>
#include <string_view>

#include "CATCSO.h"
#include "CATPathElement.h"
#include "QTBCheck.h"
#include "QTBIPdmNode.h"
#include "QTBIRepNode.h"

namespace {

constexpr std::string_view UNAVAILABLE_COMMANDS[] = {"Cut", "PasteSpecial", "Link"};

bool IsUnavailableCommand(const char* commandName)
{
    return commandName != NULL &&
           std::ranges::find(UNAVAILABLE_COMMANDS, std::string_view(commandName)) != std::end(UNAVAILABLE_COMMANDS);
}

} // namespace

HRESULT QTBECSOFilterOnRepNode::CommandIsAvailable(const char* commandName, CATCSO* pCSO)
{
    QTB_SCOPE("QTBECSOFilterOnRepNode::CommandIsAvailable");
    if (pCSO == NULL || IsUnavailableCommand(commandName)) {
        return S_FALSE;
    }
    pCSO->InitElementList();
    while (const CATPathElement* pPathElement = pCSO->NextElement()) {
        if (pPathElement->GetSize() == 0) {
            continue;
        }
        const CATBaseUnknown* pBaseUnknownOnCurrentRepNode = pPathElement->GetObject().Get();
        QTB_ASSERT(pBaseUnknownOnCurrentRepNode != NULL);
        const QTBIRepNode_var spIRepNode(pPathElement->GetObject());
        QTBIPdmNode_var spIPdmNode;
        if (spIRepNode != NULL_var) {
            // Whether there is one does not matter to the answer.
            spIRepNode->GetPdmNode(&spIPdmNode, FALSE, NULL);
        }
    }
    return S_OK;
}

HRESULT QTBECSOFilterOnRepNode::AvailableElements(const char*, CATCSO* pCSO, CATListValCATBaseUnknown_var** ppElements)
{
    QTB_SCOPE("QTBECSOFilterOnRepNode::AvailableElements");
    if (pCSO == NULL || ppElements == NULL || *ppElements == NULL) {
        return S_OK;
    }
    pCSO->InitElementList();
    while (const CATPathElement* pPathElement = pCSO->NextElement()) {
        if (pPathElement->GetObject() != NULL_var) {
            (*ppElements)->Append(pPathElement->GetObject());
        }
    }
    return S_OK;
}
