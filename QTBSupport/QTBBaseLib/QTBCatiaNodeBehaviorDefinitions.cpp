#include "QTBCatiaNodeBehaviorDefinitions.h"

#include "QTBSchemaElementList.h"

HRESULT QTBCatiaNodeBehaviorDefinitions::GetCatiaNodeBehaviorPtr(int index,
                                                                 QTBCatiaNodeBehavior** ppCatiaNodeBehavior) const
{
    return QTBGetSchemaElement(m_Behaviors, index, ppCatiaNodeBehavior);
}
