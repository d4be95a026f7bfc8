#pragma once

#include "CATListOwn.h"
#include "QTBChildRepNodeInfo.h"

// List of QTBChildRepNodeInfo records, held by pointer and owned by the list.
class QTBMODELLIB_API CATListValQTBChildRepNodeInfo : public CATListOwn<QTBChildRepNodeInfo>
{
public:
    using CATListOwn<QTBChildRepNodeInfo>::CATListOwn;
    CATListValQTBChildRepNodeInfo();
    CATListValQTBChildRepNodeInfo(const CATListValQTBChildRepNodeInfo& other);
    CATListValQTBChildRepNodeInfo(CATListValQTBChildRepNodeInfo&& other) noexcept;
    ~CATListValQTBChildRepNodeInfo();

    CATListValQTBChildRepNodeInfo& operator=(const CATListValQTBChildRepNodeInfo& other);
    CATListValQTBChildRepNodeInfo& operator=(CATListValQTBChildRepNodeInfo&& other) noexcept;
};
