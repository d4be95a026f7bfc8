#include "CATListValQTBNodeRelationList.h"

CATListValQTBNodeRelationList::CATListValQTBNodeRelationList() = default;
CATListValQTBNodeRelationList::CATListValQTBNodeRelationList(const CATListValQTBNodeRelationList& other) = default;
CATListValQTBNodeRelationList::CATListValQTBNodeRelationList(CATListValQTBNodeRelationList&& other) noexcept = default;
CATListValQTBNodeRelationList::~CATListValQTBNodeRelationList() = default;
CATListValQTBNodeRelationList&
CATListValQTBNodeRelationList::operator=(const CATListValQTBNodeRelationList& other) = default;
CATListValQTBNodeRelationList&
CATListValQTBNodeRelationList::operator=(CATListValQTBNodeRelationList&& other) noexcept = default;
