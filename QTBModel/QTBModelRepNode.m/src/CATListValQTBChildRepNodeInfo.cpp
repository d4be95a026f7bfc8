#include "CATListValQTBChildRepNodeInfo.h"

CATListValQTBChildRepNodeInfo::CATListValQTBChildRepNodeInfo() = default;
CATListValQTBChildRepNodeInfo::CATListValQTBChildRepNodeInfo(const CATListValQTBChildRepNodeInfo& other) = default;
CATListValQTBChildRepNodeInfo::CATListValQTBChildRepNodeInfo(CATListValQTBChildRepNodeInfo&& other) noexcept = default;
CATListValQTBChildRepNodeInfo::~CATListValQTBChildRepNodeInfo() = default;
CATListValQTBChildRepNodeInfo&
CATListValQTBChildRepNodeInfo::operator=(const CATListValQTBChildRepNodeInfo& other) = default;
CATListValQTBChildRepNodeInfo&
CATListValQTBChildRepNodeInfo::operator=(CATListValQTBChildRepNodeInfo&& other) noexcept = default;
