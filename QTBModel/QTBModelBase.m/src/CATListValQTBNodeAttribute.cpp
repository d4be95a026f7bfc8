#include "CATListValQTBNodeAttribute.h"

CATListValQTBNodeAttribute::CATListValQTBNodeAttribute() = default;
CATListValQTBNodeAttribute::CATListValQTBNodeAttribute(const CATListValQTBNodeAttribute& other) = default;
CATListValQTBNodeAttribute::CATListValQTBNodeAttribute(CATListValQTBNodeAttribute&& other) noexcept = default;
CATListValQTBNodeAttribute::~CATListValQTBNodeAttribute() = default;
CATListValQTBNodeAttribute& CATListValQTBNodeAttribute::operator=(const CATListValQTBNodeAttribute& other) = default;
CATListValQTBNodeAttribute&
CATListValQTBNodeAttribute::operator=(CATListValQTBNodeAttribute&& other) noexcept = default;
