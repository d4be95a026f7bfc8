#pragma once

#include <optional>
#include <unordered_map>

#include "CATInterface_var.h"
#include "CATUnicodeString.h"

// What the load manager has recorded about one product of the CAD session.
struct QTBProductRecord
{
    CATUnicodeString usPdmNodeType; // empty when not recorded
    CATUnicodeString usArchiveFileName;
    std::optional<unsigned char> bIsAuxFile;
    unsigned char bIsArchiveRoot = FALSE;
};

// The records of the products, by component; an instance shares the record of its reference. A record keeps its product
// alive, so that no other product can come to its place; records of products that are no longer in session and that
// nobody else holds are given up as new ones come.
class QTBProductRecords
{
public:
    // Null when nothing is recorded.
    const QTBProductRecord* Find(const CATBaseUnknown_var& spProduct) const;

    // The product's record, made when there is none.
    QTBProductRecord& Make(const CATBaseUnknown_var& spProduct);

private:
    struct Entry
    {
        CATBaseUnknown_var spProduct;
        QTBProductRecord record;
    };

    static constexpr std::size_t FIRST_LIMIT = 64;

    void DropUnused();

    std::unordered_map<const CATBaseUnknown*, Entry> m_Entries;
    std::size_t m_Limit = FIRST_LIMIT;
};
