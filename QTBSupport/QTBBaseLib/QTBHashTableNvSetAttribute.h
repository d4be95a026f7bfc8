#pragma once

#include "CATDataType.h"
#include "CATListValCATUnicodeString.h"
#include "QTBHashTableAttribute.h"

// Entry that holds a set of named values under a node key, in the order in which the names were set first. The load
// manager keeps a node's CATIA attributes in one.
class QTBBASELIB_API QTBHashTableNvSetAttribute : public QTBHashTableAttribute
{
public:
    explicit QTBHashTableNvSetAttribute(const CATUnicodeString& usKey);
    ~QTBHashTableNvSetAttribute() override;

    // Replaces the set. The lists are parallel; a name that occurs twice keeps its last value. Fails, and changes
    // nothing, when the lists differ in size or a name is empty.
    HRESULT SetNvSet(const CATListValCATUnicodeString& names, const CATListValCATUnicodeString& values);

    // The set as two parallel lists.
    HRESULT GetNvSet(CATListValCATUnicodeString* pNames, CATListValCATUnicodeString* pValues) const;

    // Changes or adds one value; fails for an empty name.
    HRESULT SetNvValue(const CATUnicodeString& usName, const CATUnicodeString& usValue);

    // One value; E_FAIL when the set has no such name.
    HRESULT GetNvValue(const CATUnicodeString& usName, CATUnicodeString* pusValue) const;

    // Writes a line `  name = [value]` for each value to the debug output, when the debug status is on.
    HRESULT PrintValues() const;

private:
    CATListValCATUnicodeString m_Names;
    CATListValCATUnicodeString m_Values;
};
