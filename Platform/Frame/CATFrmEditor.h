#pragma once

#include <memory>

#include "CATEventSource.h"
#include "CATHSO.h"
#include "CATPSO.h"
#include "CATPathElementPool.h"

class CATDocument;
class CATFrmLayout;

// Editor: what the windows of one document share, above all the sets of preselected and highlighted objects. The
// layout owns it and closes it with its last window.
class PLATFORM_API CATFrmEditor : public CATEventSource
{
public:
    // Event that the layout sends when it has closed an editor; the editor is the sender and is deleted afterwards.
    static const char* EDITOR_CLOSE_ENDED() { return "EDITOR_CLOSE_ENDED"; }

    // A new editor without document in the current layout; null when there is no layout.
    static CATFrmEditor* Create();

    // The editor of the current window, null when there is none.
    static CATFrmEditor* GetCurrentEditor();

    // Never null; the editor owns them.
    CATPSO* GetPSO() { return &m_PSO; }
    CATHSO* GetHSO() { return &m_HSO; }

    // The document that is edited, null for none. No reference is added.
    virtual CATDocument* GetDocument() const { return nullptr; }

    // The paths that are alive in this editor.
    CATPathElementPool& GetPathElements() { return *m_pPathElements; }

protected:
    friend class CATFrmLayout;

    CATFrmEditor();
    ~CATFrmEditor() override;

private:
    CATPSO m_PSO;
    CATHSO m_HSO;
    std::shared_ptr<CATPathElementPool> m_pPathElements;
};
