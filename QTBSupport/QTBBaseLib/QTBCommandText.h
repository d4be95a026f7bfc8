#pragma once

#include "CATDataType.h"
#include "CATUnicodeString.h"
#include "QTBBaseLibExport.h"

class QTBExpDlgRelExpandInfo;
class QTBPdmTree;
class QTBSchema;

// The texts of commands that have no header, because what they do depends on the schema: the menu items of a rep node
// carry them and QTBCommands reads them back. A text is good for the schema that it was made with.
//
//     SingleExpand <system>/<customization> <relation>-><relationship>     -> from left to right, <- from right to left
//     MultiExpand <system>/<customization> <relation><-<relationship>
//     PdmTree<system><customization><name of the tree>
//     Create<relation>;<marker>;<class>;<owner's class>;<owner's key>;<catalog>
//
// The Read operations answer S_FALSE for a text that is another command's, and fail with a message for a command that
// the schema in force does not know.
class QTBBASELIB_API QTBCommandText
{
public:
    // Expands a node along a relation, one level or all.
    static CATUnicodeString MakeExpand(const QTBSchema& schema, const QTBExpDlgRelExpandInfo& info);
    static HRESULT ReadExpand(const CATUnicodeString& usText, QTBExpDlgRelExpandInfo* pInfo);

    // Expands a node along one of the trees that the schema defines for its class. The schema's system and
    // customization are those of QTBSchemaUtil.
    static CATUnicodeString MakePdmTree(const CATUnicodeString& usSystem, const CATUnicodeString& usCustomization,
                                        const QTBPdmTree& pdmTree);
    static HRESULT ReadPdmTree(const CATUnicodeString& usText, CATUnicodeString* pusTreeName);

    // Creates an object of a class and relates it to another object, its owner.
    struct Creation
    {
        CATUnicodeString usRelationName;
        // Whether the owner stands at the relation's left end.
        unsigned char bLeftToRight = TRUE;
        CATUnicodeString usClassName;
        CATUnicodeString usOwnerClassName;
        CATUnicodeString usOwnerKey;
        // Message catalog with the display names of the schema.
        CATUnicodeString usCatalogName;

        friend bool operator==(const Creation&, const Creation&) = default;
    };
    static CATUnicodeString MakeCreation(const Creation& creation);
    static HRESULT ReadCreation(const CATUnicodeString& usText, Creation* pCreation);
};
