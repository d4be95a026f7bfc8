#pragma once

#include <string>
#include <vector>

#include "CATIProduct.h"
#include "CATListValCATBaseUnknown_var.h"

// The products of an assembly in the order in which its tree is read from top to bottom.
namespace ProductTree {

struct Place
{
    CATIProduct_var spIProduct;
    int level;        // 0 for the product of the document
    bool isLast;      // the last child of its father
    int father;       // position of the father in the list, -1 for none
    std::string path; // instance names from the top down, joined with "/"; empty at the top
};

// All places in the trees of the documents. Walks with a stack of its own. Raises HostError when there are more than
// QTBLimits::GetMaxProducts.
std::vector<Place> Collect(const CATListValCATBaseUnknown_var& documents);

// What a tree shows of a product: instance name and part number.
std::string GetLabel(const CATIProduct_var& spIProduct);

} // namespace ProductTree
