#pragma once

#include <utility>
#include <vector>

#include "CATIDOMElement.h"
#include "CATIDOMNodeList.h"

// List of elements with a count of its own.
class CATDOMNodeList final : public CATIDOMNodeList
{
public:
    explicit CATDOMNodeList(std::vector<CATIDOMElement_var> elements)
        : CATIDOMNodeList(static_cast<CATComponent*>(nullptr)), m_Elements(std::move(elements))
    {
    }

    using CATBaseUnknown::QueryInterface;
    HRESULT QueryInterface(const IID& iid, void** ppv) override;
    unsigned int AddRef() override { return ++m_References; }
    unsigned int Release() override;

    HRESULT GetLength(int* pLength) override;
    HRESULT Item(int index, CATIDOMNode_var* pspNode) override;

private:
    unsigned int m_References = 1;
    std::vector<CATIDOMElement_var> m_Elements;
};
