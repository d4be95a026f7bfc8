#pragma once

#include "CATTie.h"
#include "CATIPersistent.h"

// Interface object of CATIPersistent; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIECATIPersistent : public Tie
{
public:
    using Tie::Tie;

    unsigned char Dirty() override
    {
        return Target::Of(*this)->Dirty();
    }

    void Save() override
    {
        return Target::Of(*this)->Save();
    }

    void SaveAs(const CATUnicodeString& storageName, unsigned char bBecameCurrent) override
    {
        return Target::Of(*this)->SaveAs(storageName, bBecameCurrent);
    }

    void SaveAs_B(void* pStorage) override
    {
        return Target::Of(*this)->SaveAs_B(pStorage);
    }

    void Load(const CATUnicodeString& storageName, unsigned char bReadOnly) override
    {
        return Target::Of(*this)->Load(storageName, bReadOnly);
    }

    void Load_B(void* pStorage) override
    {
        return Target::Of(*this)->Load_B(pStorage);
    }
};
