#include "CATListValQTBNodeAttributeList.h"

CATListValQTBNodeAttributeList::CATListValQTBNodeAttributeList() = default;
CATListValQTBNodeAttributeList::CATListValQTBNodeAttributeList(const CATListValQTBNodeAttributeList& other) = default;
CATListValQTBNodeAttributeList::CATListValQTBNodeAttributeList(CATListValQTBNodeAttributeList&& other) noexcept =
    default;
CATListValQTBNodeAttributeList::~CATListValQTBNodeAttributeList() = default;
CATListValQTBNodeAttributeList&
CATListValQTBNodeAttributeList::operator=(const CATListValQTBNodeAttributeList& other) = default;
CATListValQTBNodeAttributeList&
CATListValQTBNodeAttributeList::operator=(CATListValQTBNodeAttributeList&& other) noexcept = default;
