#include "CATDOMNodeBase.h"

#include "CATDOMElement.h"

namespace {

CATDOMElement* ToElement(const CATIDOMNode_var& spNode)
{
    return dynamic_cast<CATDOMElement*>(spNode.Get());
}

} // namespace

template <class Interface>
HRESULT CATDOMNodeBase<Interface>::AppendChild(const CATIDOMNode_var& spChild)
{
    CATDOMElement* pChild = ToElement(spChild);
    return pChild != nullptr ? GetStore().AppendChild(m_pNode, GetBranch(), pChild) : E_FAIL;
}

template <class Interface>
HRESULT CATDOMNodeBase<Interface>::RemoveChild(const CATIDOMNode_var& spChild)
{
    CATDOMElement* pChild = ToElement(spChild);
    return pChild != nullptr ? GetStore().RemoveChild(m_pNode, pChild) : E_FAIL;
}

template class CATDOMNodeBase<CATIDOMElement>;
template class CATDOMNodeBase<CATIDOMDocument>;
