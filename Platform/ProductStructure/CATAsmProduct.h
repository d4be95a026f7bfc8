#pragma once

#include <cstdint>

#include "CATBaseUnknown.h"
#include "CATListValCATBaseUnknown_var.h"

class CATPrdReference;
struct CATPrdUsage;

// Implementation object of a product, a component of late type ASMPRODUCT: a reference, which stands at the top of a
// tree, or an instance in one. A product holds the instances below it; these know it while it lives.
//
// Nothing here walks down or up a tree by recursion, so trees may be as deep as they like.
class CATAsmProduct : public CATBaseUnknown
{
public:
    static const CATLateType& GetLateType();

    // The component seen as a product; null for a null pointer and for any other component.
    static CATAsmProduct* FromComponent(const CATBaseUnknown* pObject);

    ~CATAsmProduct() override;

    // Null at the top of a tree, and for an instance that was taken out of its tree.
    CATAsmProduct* GetFather() const { return IsRemoved() ? nullptr : m_pFather; }

    // The product's reference: itself or that of the instance.
    virtual CATPrdReference& GetReference() = 0;

    // What an instance is a place of; null for a reference.
    virtual CATPrdUsage* GetUsage() { return nullptr; }

    // The instances below, in the order of the reference's uses. Those that were never asked for are made.
    const CATListValCATBaseUnknown_var& GetChildren();

    // Takes out the child at that position, because its use was removed there this moment.
    void DropChild(int position);

protected:
    explicit CATAsmProduct(CATAsmProduct* pFather);

    // Lets go of the instances below.
    void DropChildren();

private:
    virtual bool IsInTree() const = 0;
    // Whether the use is gone of which an instance is a place.
    virtual bool IsRemoved() const { return false; }
    void DropRemovedChildren();

    CATAsmProduct* m_pFather;
    // The instances of the first uses of the reference; brought up to date when they are asked for.
    CATListValCATBaseUnknown_var m_Children;
    // How many uses the reference had lost when the list was brought up to date.
    std::uint32_t m_RemovedUsages = 0;
};
