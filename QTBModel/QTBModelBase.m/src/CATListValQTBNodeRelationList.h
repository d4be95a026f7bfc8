#pragma once

#include "CATListOwn.h"
#include "QTBNodeRelationList.h"

// List of QTBNodeRelationList records, held by pointer and owned by the list.
class QTBMODELLIB_API CATListValQTBNodeRelationList : public CATListOwn<QTBNodeRelationList>
{
public:
    using CATListOwn<QTBNodeRelationList>::CATListOwn;
    CATListValQTBNodeRelationList();
    CATListValQTBNodeRelationList(const CATListValQTBNodeRelationList& other);
    CATListValQTBNodeRelationList(CATListValQTBNodeRelationList&& other) noexcept;
    ~CATListValQTBNodeRelationList();

    CATListValQTBNodeRelationList& operator=(const CATListValQTBNodeRelationList& other);
    CATListValQTBNodeRelationList& operator=(CATListValQTBNodeRelationList&& other) noexcept;
};
