#pragma once

#include "CATBaseUnknown.h"
#include "CATListValCATString.h"

// CATIRootProperties on the late type QTBRepNode: the property editors of a rep node.
class QTBERootPropertiesOnRepNode : public CATBaseUnknown
{
public:
    // One editor for each of the forms "Properties" and "UpdateItem" that the node's PDM class has. What fails ends the
    // list where it is.
    CATListValCATString GetListOfEditors();

private:
    void CollectEditors(CATListValCATString* pEditors);
};
