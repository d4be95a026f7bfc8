#include "CATDOMBulkRelease.h"

#include "CATDOMStore.h"

CATDOMBulkRelease::CATDOMBulkRelease()
{
    CATDOMStore::BeginBulkRelease();
}

CATDOMBulkRelease::~CATDOMBulkRelease()
{
    CATDOMStore::EndBulkRelease();
}
