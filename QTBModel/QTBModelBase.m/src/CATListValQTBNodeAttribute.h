#pragma once

#include "CATListOwn.h"
#include "QTBNodeAttribute.h"

// List of QTBNodeAttribute records, held by pointer and owned by the list.
class QTBMODELLIB_API CATListValQTBNodeAttribute : public CATListOwn<QTBNodeAttribute>
{
public:
    using CATListOwn<QTBNodeAttribute>::CATListOwn;
    CATListValQTBNodeAttribute();
    CATListValQTBNodeAttribute(const CATListValQTBNodeAttribute& other);
    CATListValQTBNodeAttribute(CATListValQTBNodeAttribute&& other) noexcept;
    ~CATListValQTBNodeAttribute();

    CATListValQTBNodeAttribute& operator=(const CATListValQTBNodeAttribute& other);
    CATListValQTBNodeAttribute& operator=(CATListValQTBNodeAttribute&& other) noexcept;
};
