#pragma once

#include <cstddef>
#include <vector>

#include "CATDocument.h"
#include "CATInterface_var.h"
#include "CATUnicodeString.h"

class CATPrdReference;

// A document that defines a product: the reference at its top and the embedded components in it. The types are late
// types of their own, which derive from one (BASE_TYPE).
class CATPrdDocument final : public CATDocument
{
public:
    struct Type
    {
        const char* name;
        // Extension of the files of that type; upper and lower case count the same.
        const char* extension;
        // What the product of a new document is called, with a number behind.
        const char* newName;
    };
    static constexpr const char* BASE_TYPE = "CATPrdDocument";
    static constexpr Type TYPES[] = {{"CATProduct", "CATProduct", "Product"},
                                     {"CATPart", "CATPart", "Part"},
                                     {"CATDrawing", "CATDrawing", "Drawing"},
                                     {"CGR", "cgr", "Shape"},
                                     {"V4Model", "model", "Model"}};
    static constexpr std::size_t TYPE_COUNT = sizeof(TYPES) / sizeof(TYPES[0]);
    static constexpr const char* SHAPE_TYPE = "CGR";

    static bool IsType(const CATUnicodeString& name);
    // The names of all types, for a message.
    static CATUnicodeString GetTypeNames();
    // The type that goes with a file's extension; empty when none does.
    static CATUnicodeString GetTypeOfFile(const CATUnicodeString& storageName);

    explicit CATPrdDocument(const Type& type);
    ~CATPrdDocument() override;

    // A document of one of the types, without product and not in session.
    static CATBaseUnknown_var Create(const CATUnicodeString& typeName, const CATUnicodeString& storageName,
                                     const CATUnicodeString& displayName);

    // The component seen as such a document; null for a null pointer and for any other component.
    static CATPrdDocument* FromComponent(const CATBaseUnknown* pObject);

    // The product at the top; null when there is none.
    CATPrdReference* GetRoot() const;
    // Gives the document its product. It knows it by its part number from now on, so the definition must be complete.
    void SetRoot(CATPrdReference& reference);
    // Makes a new product the root: a part number is made for it.
    void MakeRoot();
    // Another document takes the product over, and whether it was opened for itself.
    void HandRootTo(CATPrdDocument& other);

    // Keeps an embedded component.
    void AddEmbedded(CATPrdReference& reference);
    // Keeps a document with the shape of an embedded component.
    void AddShape(CATPrdDocument& shapeDocument);

    void SetOpened() { m_bOpened = true; }
    // Whether the document is opened for itself or used by others.
    bool IsNeeded() const;
    // It closes with all that it holds, unless others use it.
    bool LeavesSession() override;

private:
    void Close();

    const Type& m_Type;
    bool m_bOpened = false;
    std::size_t m_ShapeUseCount = 0;
    CATBaseUnknown_var m_spRoot;
    std::vector<CATBaseUnknown_var> m_Embedded;
    std::vector<CATBaseUnknown_var> m_Shapes;
};
