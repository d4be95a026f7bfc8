#pragma once

#include <functional>
#include <vector>

#include "CATUnicodeString.h"
#include "QTBBaseLibExport.h"

class QTBSchemaNode;

// The dialog in which the user fills in the attributes of an item.
class QTBBASELIB_API QTBItemDialog
{
public:
    struct Field
    {
        CATUnicodeString usAttrName;
        CATUnicodeString usDisplayName;
        CATUnicodeString usValue;
    };

    // The attributes that one item has in the dialog, under its display name. A new item and the relation that places
    // it are asked for together.
    struct Page
    {
        CATUnicodeString usTitle;
        std::vector<Field> fields;
    };

    // Lets the user change the values; false when the user gives up.
    using Handler = std::function<bool(std::vector<Page>* pPages)>;

    // Set by a program that has a user; an empty function for nobody. Forgotten at the end of the session.
    static void SetHandler(Handler handler);

    // Asks the user. False when the user gives up, and without a user.
    static bool Ask(std::vector<Page>* pPages);

    // An empty page with the attributes of a class's form; no fields when the class has no such form. Attributes of
    // embedded objects are left out, because they belong to another item.
    static Page MakePage(const QTBSchemaNode& schemaNode, const CATUnicodeString& usFormName);

    // The name under which the user knows an attribute.
    static CATUnicodeString GetDisplayName(const CATUnicodeString& usAttrName);

    // XML of attributes with the values: "a" elements, one after the other.
    static CATUnicodeString MakeXml(const std::vector<Field>& fields);
};
