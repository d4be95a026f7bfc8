#include "CATListValQTBNodeRelation.h"

CATListValQTBNodeRelation::CATListValQTBNodeRelation() = default;
CATListValQTBNodeRelation::CATListValQTBNodeRelation(const CATListValQTBNodeRelation& other) = default;
CATListValQTBNodeRelation::CATListValQTBNodeRelation(CATListValQTBNodeRelation&& other) noexcept = default;
CATListValQTBNodeRelation::~CATListValQTBNodeRelation() = default;
CATListValQTBNodeRelation& CATListValQTBNodeRelation::operator=(const CATListValQTBNodeRelation& other) = default;
CATListValQTBNodeRelation& CATListValQTBNodeRelation::operator=(CATListValQTBNodeRelation&& other) noexcept = default;
