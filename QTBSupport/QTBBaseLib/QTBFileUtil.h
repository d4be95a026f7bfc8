#pragma once

#include "CATInterface_var.h"
#include "CATUnicodeString.h"
#include "QTBBaseLibExport.h"

class CATDocument;
class CATIProduct;
class QTBIRepNode;
using CATIProduct_var = CATInterface_var<CATIProduct>;
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

    // The name of the file that defines a product's reference, without directory, and the product's type (usCATPRODUCT,
    // usEMBCOMP, ...); each may be null. The name is empty for an embedded component and for a document that was never
    // saved. A product of which only the shape is in session has the type of its file. Fails quietly for an empty
    // handle, for a product whose document was closed and, when the type is asked for, for a file of another type.
    static HRESULT GetReferenceFileName(const CATIProduct_var& spIProduct, CATUnicodeString* pusFileName,
                                        CATUnicodeString* pusPsnNodeType);

    // The type of a document (usCATPRODUCT, ...): the document's own, else that of its file's extension. E_FAIL for a
    // document of any other type.
    static HRESULT GetFileType(CATDocument* pDocument, CATUnicodeString* pusFileType);

    // Path of a file in the folder through which files are exchanged with the PDM system
    // (QTBGlobVarsUtil::GetExMapFolder): the path's file name in that folder. E_FAIL for a path without file name.
    static HRESULT CreateExMapFilePath(const CATUnicodeString& usPath, CATUnicodeString* pusExMapFilePath);
};
