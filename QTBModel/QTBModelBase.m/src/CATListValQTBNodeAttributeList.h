#pragma once

#include "CATListOwn.h"
#include "QTBNodeAttributeList.h"

// List of QTBNodeAttributeList records, held by pointer and owned by the list.
class QTBMODELLIB_API CATListValQTBNodeAttributeList : public CATListOwn<QTBNodeAttributeList>
{
public:
    using CATListOwn<QTBNodeAttributeList>::CATListOwn;
    CATListValQTBNodeAttributeList();
    CATListValQTBNodeAttributeList(const CATListValQTBNodeAttributeList& other);
    CATListValQTBNodeAttributeList(CATListValQTBNodeAttributeList&& other) noexcept;
    ~CATListValQTBNodeAttributeList();

    CATListValQTBNodeAttributeList& operator=(const CATListValQTBNodeAttributeList& other);
    CATListValQTBNodeAttributeList& operator=(CATListValQTBNodeAttributeList&& other) noexcept;
};
