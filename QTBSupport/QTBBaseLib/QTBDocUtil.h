#pragma once

#include "CATInterface_var.h"
#include "QTBBaseLibExport.h"

class CATIEditor;
class QTBIQtbFrmWindow;
using CATIEditor_var = CATInterface_var<CATIEditor>;
using QTBIQtbFrmWindow_var = CATInterface_var<QTBIQtbFrmWindow>;

// Documents of the session.
class QTBBASELIB_API QTBDocUtil
{
public:
    // Opens a PDM document with its window, which becomes the current one and shows the default root node. The window
    // object and the document's editor interface are the answer; each pointer may be null. When the window is closed,
    // the document's rep node container is cleaned up. Fails when the application has no layout or when no library is
    // loaded that implements the document.
    static HRESULT CreateNewQtbDocument(QTBIQtbFrmWindow_var* pspIQtbFrmWindow, CATIEditor_var* pspIEditor);

    // Closes every PDM document with its windows. Called at the end of the session.
    static void CloseAllQtbDocuments();
};
