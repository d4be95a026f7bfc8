#pragma once

#include "CATBaseUnknown.h"

// CATInit on the late type QTBDoc: prepares a PDM document that the frame has created. Holds the document's rep node
// container, which is its root container.
class QTBEInitOnDoc : public CATBaseUnknown
{
public:
    QTBEInitOnDoc() = default;
    ~QTBEInitOnDoc() override;

    // Makes sure that the session's PDM node container has its default root node and creates the document's rep node
    // container with its default root rep node. Never fails: what goes wrong is written to the debug output. The
    // argument is not looked at. Called once by the frame when it creates the document.
    void Init(unsigned char bDestroyExistingData);

    // The rep node container's interface of that name, with a reference; null when there is no container or when it
    // does not answer the interface.
    CATBaseUnknown* GetRootContainer(const char* interfaceName);

private:
    void InitGuarded();
    void ReleaseRepNodeCont();

    CATBaseUnknown* m_pRepNodeCont = NULL;
};
