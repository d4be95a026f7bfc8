#pragma once

#include "CATInterface_var.h"
#include "QTBInterfacesLibExport.h"

class CATFrmWindow;

inline constexpr IID IID_QTBIQtbFrmWindow{"QTBIQtbFrmWindow"};

// A PDM window.
class QTBINTERFACESLIB_API QTBIQtbFrmWindow : public CATBaseUnknown
{
    CATDeclareInterface(QTBIQtbFrmWindow, CATBaseUnknown)

public:
    virtual HRESULT GetFrmWindowPtr(CATFrmWindow** ppFrmWindow) = 0;
};

using QTBIQtbFrmWindow_var = CATInterface_var<QTBIQtbFrmWindow>;
