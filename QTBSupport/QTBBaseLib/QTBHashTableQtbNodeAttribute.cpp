#include "QTBHashTableQtbNodeAttribute.h"

QTBHashTableQtbNodeAttribute::QTBHashTableQtbNodeAttribute(const CATUnicodeString& usKey,
                                                           const CATBaseUnknown_var& spBaseUnknownOnNode)
    : QTBHashTableAttribute(usKey), m_spBaseUnknownOnNode(spBaseUnknownOnNode)
{
}

QTBHashTableQtbNodeAttribute::~QTBHashTableQtbNodeAttribute() = default;
