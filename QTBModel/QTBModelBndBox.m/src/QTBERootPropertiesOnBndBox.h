#pragma once

#include "CATBaseUnknown.h"
#include "CATListValCATString.h"
#include "QTBCheck.h"

// CATIRootProperties on the late type QTBBndBox: a box has no property editors.
class QTBERootPropertiesOnBndBox : public CATBaseUnknown
{
public:
    // An empty list.
    CATListValCATString GetListOfEditors()
    {
        QTB_SCOPE("QTBERootPropertiesOnBndBox::GetListOfEditors");
        return {};
    }
};
