#pragma once

#include "CATBaseUnknown.h"

class CATFrmWindow;

// QTBIQtbFrmWindow on the late type QTBFrmWindow.
class QTBEQtbFrmWindowOnFrmWindow : public CATBaseUnknown
{
public:
    HRESULT GetFrmWindowPtr(CATFrmWindow** ppFrmWindow);
};
