#pragma once

#include <memory>

#include "CATCSO.h"
#include "CATEventSource.h"
#include "CATHSO.h"
#include "CATPSO.h"
#include "CATPathElementPool.h"
#include "CATString.h"

class CATDocument;
class CATFrmLayout;

// Editor: what the windows of one document share, above all the sets of selected, preselected and highlighted objects.
// The layout owns it and closes it with its last window.
class PLATFORM_API CATFrmEditor : public CATEventSource
{
public:
    // Event that the layout sends when it has closed an editor; the editor is the sender and is deleted afterwards.
    static const char* EDITOR_CLOSE_ENDED() { return "EDITOR_CLOSE_ENDED"; }

    // Event that an editor sends through its own callback manager when another workshop has become active in it.
    static const char* WORKSHOP_ACTIVATED() { return "WORKSHOP_ACTIVATED"; }

    // A new editor without document in the current layout; null when there is no layout.
    static CATFrmEditor* Create();

    // The editor of the current window, null when there is none.
    static CATFrmEditor* GetCurrentEditor();

    // Never null; the editor owns them.
    CATCSO* GetCSO() { return &m_CSO; }
    CATPSO* GetPSO() { return &m_PSO; }
    CATHSO* GetHSO() { return &m_HSO; }

    // The document that is edited, null for none. No reference is added.
    virtual CATDocument* GetDocument() const { return nullptr; }

    // The workshop whose commands the frame offers for this editor; empty for that of the application itself.
    const CATString& GetWorkshop() const { return m_Workshop; }
    void ActivateWorkshop(const CATString& workshop);

    // The paths that are alive in this editor.
    CATPathElementPool& GetPathElements() { return *m_pPathElements; }

protected:
    friend class CATFrmLayout;

    CATFrmEditor();
    ~CATFrmEditor() override;

private:
    CATCSO m_CSO;
    CATPSO m_PSO;
    CATHSO m_HSO;
    CATString m_Workshop;
    std::shared_ptr<CATPathElementPool> m_pPathElements;
};
