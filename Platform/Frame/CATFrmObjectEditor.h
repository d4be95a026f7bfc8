#pragma once

#include "CATFrmEditor.h"
#include "CATInterface_var.h"

// Editor of a document. Keeps the document alive until it is closed.
class PLATFORM_API CATFrmObjectEditor : public CATFrmEditor
{
public:
    // A new editor for the document in the current layout; null when there is no document or no layout.
    static CATFrmObjectEditor* Create(CATDocument* pDocument);

    CATDocument* GetDocument() const override { return m_pDocument; }

private:
    explicit CATFrmObjectEditor(CATDocument* pDocument);
    ~CATFrmObjectEditor() override;

    CATDocument* m_pDocument;
    CATBaseUnknown_var m_spDocument;
};
