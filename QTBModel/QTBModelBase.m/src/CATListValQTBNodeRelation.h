#pragma once

#include "CATListOwn.h"
#include "QTBNodeRelation.h"

// List of QTBNodeRelation records, held by pointer and owned by the list.
class QTBMODELLIB_API CATListValQTBNodeRelation : public CATListOwn<QTBNodeRelation>
{
public:
    using CATListOwn<QTBNodeRelation>::CATListOwn;
    CATListValQTBNodeRelation();
    CATListValQTBNodeRelation(const CATListValQTBNodeRelation& other);
    CATListValQTBNodeRelation(CATListValQTBNodeRelation&& other) noexcept;
    ~CATListValQTBNodeRelation();

    CATListValQTBNodeRelation& operator=(const CATListValQTBNodeRelation& other);
    CATListValQTBNodeRelation& operator=(CATListValQTBNodeRelation&& other) noexcept;
};
