#pragma once

#include "CATInterface_var.h"
#include "CATUnicodeString.h"
#include "QTBBaseLibExport.h"

class QTBIRepNode;
using QTBIRepNode_var = CATInterface_var<QTBIRepNode>;

// File names. A path may have slashes or backslashes; an extension is what follows the last dot of a name that does
// not begin with that dot.
class QTBBASELIB_API QTBFileUtil
{
public:
    // The name without its extension; a name without one stays as it is. A directory in front stays.
    static HRESULT GetFileNameWithoutExtension(const CATUnicodeString& usFileName, CATUnicodeString* pusName);

    // What follows the last slash or backslash of a path.
    static HRESULT GetFileNameFromPathString(const CATUnicodeString& usPath, CATUnicodeString* pusFileName);

    // The extension without its dot. E_FAIL for a name without one.
    static HRESULT GetFileExtensionFromFileName(const CATUnicodeString& usFileName, CATUnicodeString* pusExtension);

    // The name of the file that a rep node stands for. E_FAIL for a node that stands for none, or for one without name.
    static HRESULT GetFileName(const QTBIRepNode_var& spIRepNode, CATUnicodeString* pusFileName);
};
