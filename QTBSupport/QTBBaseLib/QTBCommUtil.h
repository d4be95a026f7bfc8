#pragma once

#include "CATInterface_var.h"
#include "QTBBaseLibExport.h"

class QTBICommunicationServices;
using QTBICommunicationServices_var = CATInterface_var<QTBICommunicationServices>;

// The session's connection to the PDM system.
class QTBBASELIB_API QTBCommUtil
{
public:
    // The component through which the PDM system is reached. Fails with a message for the user when the session has
    // none, and with E_POINTER for a null pointer.
    static HRESULT GetCommComponent(QTBICommunicationServices_var* pspICommunicationServices);

    // Connects the session; an empty handle disconnects it. Called at the session's start and end.
    static void SetCommComponent(const QTBICommunicationServices_var& spICommunicationServices);
};
