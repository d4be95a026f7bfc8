#pragma once

#include "CATInterface_var.h"
#include "QTBHashTableAttribute.h"

// Entry that holds a node under its key. A rep node container keeps one for each PDM node on the path that it expands.
class QTBBASELIB_API QTBHashTableQtbNodeAttribute : public QTBHashTableAttribute
{
public:
    QTBHashTableQtbNodeAttribute(const CATUnicodeString& usKey, const CATBaseUnknown_var& spBaseUnknownOnNode);
    ~QTBHashTableQtbNodeAttribute() override;

    const CATBaseUnknown_var& GetValue() const { return m_spBaseUnknownOnNode; }

private:
    CATBaseUnknown_var m_spBaseUnknownOnNode;
};
