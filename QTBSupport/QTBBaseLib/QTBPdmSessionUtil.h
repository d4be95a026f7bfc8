#pragma once

#include "CATDataType.h"
#include "CATListValCATUnicodeString.h"
#include "QTBBaseLibExport.h"
#include "QTBConstants.h"

// Settings of the PDM session and how CAD documents are stored in the PDM system. All of it is part of the schema in
// force (QTBSchemaUtil); operations that return a result fail while there is none.
class QTBBASELIB_API QTBPdmSessionUtil
{
public:
    // Whether products are related to the BOM part structure; otherwise to the structure of files. FALSE while no
    // schema is loaded.
    static unsigned char UseBomPartStructure();

    // A setting that is a text. E_FAIL when the schema does not define it; with bReportIfUndefined with an error that
    // says so.
    static HRESULT GetPdmSessionStringAttrValue(const QTBPdmSessionStringAttr& attr, CATUnicodeString* pusValue,
                                                const unsigned char& bReportIfUndefined);

    // How CAD files of a kind are stored: as parts of the BOM part structure (QTB_BOM_TYPE_PART) or as file objects
    // (QTB_BOM_TYPE_AUX_FILE). QTB_BOM_TYPE_ALL takes the part if there is one, else the file. Each out-pointer may be
    // null.
    //   pusPdmClass    the PDM class of new objects, empty when the schema defines none
    //   pbIsBomPart    whether such a document stands for a part of the BOM part structure
    //   ppPdmClasses   all PDM classes, subclasses included; the list belongs to the schema; null when there are none
    //   pbIsDefined    whether the schema defines a class
    // A kind that is not defined is no failure.
    static HRESULT GetCatiaFileClassInfo(const QTBCatiaFileClass& fileClass, CATUnicodeString* pusPdmClass,
                                         unsigned char* pbIsBomPart, CATListValCATUnicodeString** ppPdmClasses,
                                         const QTBBomType& bomType, unsigned char* pbIsDefined);

    // Whether CAD files of the kind are stored as objects of that PDM class.
    static HRESULT IsCatiaFileClass(const QTBCatiaFileClass& fileClass, const CATUnicodeString& usPdmNodeType,
                                    unsigned char* pbIsFileClass);

    // The PDM class of file objects for a type of CAD document (usCATPART and so on). E_FAIL for another text and for a
    // type that the schema does not define; with bReportIfUndefined with an error that says so.
    static HRESULT CatDocTypeCatToPdm(const CATUnicodeString& usCatDocType, CATUnicodeString* pusPdmClass,
                                      const unsigned char& bReportIfUndefined);

    // The type of CAD document that objects of a PDM class hold, as text and as number; each may be null. E_FAIL when
    // they hold none.
    static HRESULT CatDocTypePdmToCat(const CATUnicodeString& usPdmClass, CATUnicodeString* pusCatDocType,
                                      QTBCatiaFileClass* pFileClass);

    // The file class of a type of CAD document and back; QTB_CATIA_FILE_CLASS_UNKNOWN and the empty text for anything
    // else.
    static QTBCatiaFileClass GetFileClassOfDocType(const CATUnicodeString& usCatDocType);
    static CATUnicodeString GetDocTypeOfFileClass(QTBCatiaFileClass fileClass);
};
