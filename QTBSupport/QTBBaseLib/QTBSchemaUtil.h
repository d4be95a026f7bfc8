#pragma once

#include "CATListValCATUnicodeString.h"
#include "QTBConstants.h"
#include "QTBIPdmNode.h"

class QTBCatiaNodeBehaviorDefinitions;
class QTBSchema;
class QTBSchemaAttribute;
class QTBSchemaAttributeRep;
class QTBSchemaDataSource;
class QTBSchemaNode;

// The PDM schema in force and what it says. The schema comes from a file (QTBSchema.xml, docs/formats.md); display
// texts come from the message catalog that the schema names.
//
// Every operation fails while no schema is loaded, with an error that says so, and with E_POINTER for a null
// out-pointer unless it may be null. Pointers handed out stay good until the end of the session, also when another
// schema is loaded in between.
class QTBBASELIB_API QTBSchemaUtil
{
public:
    // Reads a schema file and puts it in force. Fails with an error that names the file, the line, what is wrong there
    // and what was expected (CATXMLError); the schema held before stays in force then. Called when a session starts.
    static HRESULT LoadSchema(const CATUnicodeString& usPath);

    // Frees the schemas that were replaced by later ones. Called at the end of the session, when no node is left that
    // could point to one of their classes. The schema in force stays.
    static void ReleaseReplacedSchemas();

    static HRESULT GetCurrentSchemaPtr(QTBSchema** ppSchema);

    // Names of the attributes that mean something to the session. Those of class and key are never empty.
    static HRESULT GetClassAttr(CATUnicodeString* pusAttrName);
    static HRESULT GetKeyAttr(CATUnicodeString* pusAttrName);
    static HRESULT GetRelationAttr(CATUnicodeString* pusAttrName);
    static HRESULT GetLeftRelationshipAttr(CATUnicodeString* pusAttrName);
    static HRESULT GetRightRelationshipAttr(CATUnicodeString* pusAttrName);
    static HRESULT GetLeftRelationClassAttribute(CATUnicodeString* pusAttrName);
    static HRESULT GetRightRelationClassAttribute(CATUnicodeString* pusAttrName);

    // Whether the schema knows a class, of objects or of relations, and the class itself, which may be null and
    // receives null for an unknown class.
    static HRESULT PdmClassIsDefined(const CATUnicodeString& usClassName, unsigned char* pbIsDefined,
                                     QTBSchemaNode** ppSchemaNode);

    // All classes of parts, those that can have sub-parts, and those that the document of a single part can be stored
    // as. Each list may be null.
    static HRESULT GetPartClassNames(CATListValCATUnicodeString* pPartClassNames,
                                     CATListValCATUnicodeString* pClassNamesWithSubParts,
                                     CATListValCATUnicodeString* pCatPartClassNames);

    // Display name of a class: the text of its NLS key, its name when there is none.
    static HRESULT GetNlsClassName(const QTBSchemaNode* pSchemaNode, CATUnicodeString* pusNlsClassName);
    // The text of a key in the schema's catalog, empty when there is none.
    static CATUnicodeString GetCurrentSchemaNlsString(const CATUnicodeString& usNlsKey);
    static HRESULT GetCurrentSchemaCatalogName(CATUnicodeString* pusCatalogName);

    // Maximum number of characters of a description value; 0 or less for unlimited.
    static HRESULT MaxDescAttrLength(int* pMaxDescAttrLength);
    // Value of an attribute of the node's description that stands in an embedded object, in its display form. Fails
    // quietly when the description has no such attribute, or the node no such object or value.
    static HRESULT GetEmbeddedDescriptionAttributeValue(const QTBIPdmNode_var& spIPdmNode,
                                                        const CATUnicodeString& usAttrName, CATUnicodeString* pusValue);

    // Value of an attribute as a form or description names it, of the item or of an object embedded in it, in its
    // display form. Fails quietly when the node has no such attribute.
    static HRESULT GetAttributeValue(const QTBIPdmNode_var& spIPdmNode, const QTBSchemaAttributeRep& attr,
                                     CATUnicodeString* pusValue);

    // Whether values are shown by the display names of their data source.
    static HRESULT ShowDataSourceNlsValues(unsigned char* pbShow);
    // E_FAIL when the schema does not describe the attribute; with bReportIfUndefined with an error that names it.
    static HRESULT GetAttributePtr(const CATUnicodeString& usAttrName, QTBSchemaAttribute** ppAttribute,
                                   unsigned char bReportIfUndefined);
    // E_FAIL when the schema has none of that name.
    static HRESULT GetDataSourcePtr(const CATUnicodeString& usName, QTBSchemaDataSource** ppDataSource);

    // The PDM system that the schema is made for, as number and as text, and the name of its customization.
    static HRESULT GetSystem(QTBPdmSystem* pSystem);
    static HRESULT GetSystem(CATUnicodeString* pusSystem);
    static HRESULT GetCustomization(CATUnicodeString* pusCustomization);

    // Display text of a PDM node type, which is a PDM class or, for a product whose type is not settled yet, the type
    // of its document. bIsCurrent asks for the text of the type that the product has. E_FAIL when the catalog has no
    // text, unless bTypeIfNoText asks for the type itself instead.
    static HRESULT GetPdmNodeTypeNlsString(const unsigned char& bIsCurrent, const CATUnicodeString& usPdmNodeType,
                                           CATUnicodeString* pusNlsString, unsigned char bTypeIfNoText);
    // Id of the header of the command that gives a product that type: "QTBSetPdmNodeType" or, for the type that the
    // product has, "QTBCurrentPdmNodeType", followed by the type and "CmdHdr". E_FAIL for a type that is neither a
    // class of the schema nor the type of a document.
    static HRESULT GetPdmNodeTypeCommandHeaderIdString(const unsigned char& bIsCurrent,
                                                       const CATUnicodeString& usPdmNodeType,
                                                       CATUnicodeString* pusCommandHeaderId);

    // The behaviours that the schema configures; E_FAIL when it configures none.
    static HRESULT GetCatiaNodeBehaviorDefinitionsPtr(QTBCatiaNodeBehaviorDefinitions** ppDefinitions);
};
