#pragma once

#include <string>

#include "CATIProduct.h"

// The documents of products, and how they stand to the PDM system.
namespace ProductDocuments {

// What tells the reference of a product apart from the others in session: its document's, or a component's. Good while
// the document is in session.
struct Identity
{
    const void* pReference = nullptr; // null for a broken link
    std::string file;                 // path of the file then

    auto operator<=>(const Identity&) const = default;
};
Identity GetIdentity(const CATIProduct_var& spIProduct);

// Whether the product is an embedded component, which has no document of its own.
bool IsComponent(const CATIProduct_var& spIProduct);

// Name of the file that defines the product; empty for a component and for a document that was never saved.
std::string GetFileName(const CATIProduct_var& spIProduct);

// Why the product's document has to be saved in the PDM system or why not; isDirty is what the product said
// (QTBIPsnNode::DocumentIsDirty).
std::string Explain(const CATIProduct_var& spIProduct, bool isDirty);

} // namespace ProductDocuments
