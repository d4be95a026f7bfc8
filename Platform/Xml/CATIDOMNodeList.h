#pragma once

#include "CATIDOMNode.h"

class CATIDOMNodeList;
using CATIDOMNodeList_var = CATInterface_var<CATIDOMNodeList>;

inline constexpr IID IID_CATIDOMNodeList{"CATIDOMNodeList"};

// Nodes found in a document, in document order, as they were when they were asked for.
class PLATFORM_API CATIDOMNodeList : public CATBaseUnknown
{
    CATDeclareInterface(CATIDOMNodeList, CATBaseUnknown)

public:
    virtual HRESULT GetLength(int* pLength) = 0;

    // The node at that index, counted from 0. E_FAIL outside the list.
    virtual HRESULT Item(int index, CATIDOMNode_var* pspNode) = 0;
};
