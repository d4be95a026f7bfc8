#include "QTBHashTableNvSetAttribute.h"

#include <iostream>
#include <unordered_map>

#include "QTBDebugUtil.h"

QTBHashTableNvSetAttribute::QTBHashTableNvSetAttribute(const CATUnicodeString& usKey) : QTBHashTableAttribute(usKey) {}

QTBHashTableNvSetAttribute::~QTBHashTableNvSetAttribute() = default;

HRESULT QTBHashTableNvSetAttribute::SetNvSet(const CATListValCATUnicodeString& names,
                                             const CATListValCATUnicodeString& values)
{
    if (names.Size() != values.Size() || names.Locate("") > 0) {
        return E_FAIL;
    }
    CATListValCATUnicodeString NewNames(names.Size());
    CATListValCATUnicodeString NewValues(names.Size());
    std::unordered_map<CATUnicodeString, int> positions;
    for (int i = 1; i <= names.Size(); ++i) {
        const auto [found, isNew] = positions.try_emplace(names[i], NewNames.Size() + 1);
        if (isNew) {
            NewNames.Append(names[i]);
            NewValues.Append(values[i]);
        } else {
            NewValues.Replace(found->second, values[i]);
        }
    }
    m_Names = NewNames;
    m_Values = NewValues;
    return S_OK;
}

HRESULT QTBHashTableNvSetAttribute::GetNvSet(CATListValCATUnicodeString* pNames,
                                             CATListValCATUnicodeString* pValues) const
{
    if (pNames == nullptr || pValues == nullptr) {
        return E_POINTER;
    }
    *pNames = m_Names;
    *pValues = m_Values;
    return S_OK;
}

HRESULT QTBHashTableNvSetAttribute::SetNvValue(const CATUnicodeString& usName, const CATUnicodeString& usValue)
{
    if (usName.IsEmpty()) {
        return E_FAIL;
    }
    if (const int position = m_Names.Locate(usName); position > 0) {
        m_Values.Replace(position, usValue);
    } else {
        m_Names.Append(usName);
        m_Values.Append(usValue);
    }
    return S_OK;
}

HRESULT QTBHashTableNvSetAttribute::GetNvValue(const CATUnicodeString& usName, CATUnicodeString* pusValue) const
{
    if (pusValue == nullptr) {
        return E_POINTER;
    }
    const int position = m_Names.Locate(usName);
    if (position == 0) {
        return E_FAIL;
    }
    *pusValue = m_Values[position];
    return S_OK;
}

HRESULT QTBHashTableNvSetAttribute::PrintValues() const
{
    if (QTBDebugUtil::GetDebugStatus() != FALSE) {
        for (int i = 1; i <= m_Names.Size(); ++i) {
            std::cout << "  " << m_Names[i] << " = [" << m_Values[i] << "]" << std::endl;
        }
    }
    return S_OK;
}
