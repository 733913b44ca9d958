#include <cstddef>
#include <cstring>

#include "base/global_memory.h"
#include "tamrix32/about.h"

// All compilers of this library support offsetof for a class with virtual functions.
#pragma GCC diagnostic ignored "-Winvalid-offsetof"

/// The layout that compiled clients rely on, on 32-bit platforms.
struct CustomResourceLayout {
    static constexpr bool narrow = sizeof(void*) == 4;
    static_assert(!narrow || (sizeof(CCustomResource) == 32 && sizeof(AutoCustomResource) == 4));
    static_assert(!narrow || (offsetof(CCustomResource, dataSize) == 4 && offsetof(CCustomResource, dataAddress) == 8));
    static_assert(!narrow || offsetof(CCustomResource, resourceType) == 12);
    static_assert(!narrow || offsetof(CCustomResource, resourceName) == 16);
    static_assert(!narrow || (offsetof(CCustomResource, lockCount) == 20 && offsetof(CCustomResource, module) == 24));
    static_assert(!narrow || offsetof(CCustomResource, resourceData) == 28);
};

CCustomResource::CCustomResource(void* from, int id, char* type) {
    initCustomResource(from, MAKEINTRESOURCEA(id), type);
}

CCustomResource::CCustomResource(void* from, char* name, char* type) {
    initCustomResource(from, name, type);
}

CCustomResource::CCustomResource() {}

CCustomResource::~CCustomResource() {
    while (CCustomResource::unlock()) continue;
}

void CCustomResource::initCustomResource(void* from, char* name, char* type) {
    module = from;
    resourceName = name;
    resourceType = type;
    dataSize = 0;
    dataAddress = nullptr;
    lockCount = 0;
    resourceData = nullptr;
}

unsigned char* CCustomResource::getAddress() {
    return dataAddress;
}

long CCustomResource::getSize() {
    return dataSize;
}

int CCustomResource::isLocked() {
    return lockCount > 0;
}

int CCustomResource::lock() {
    if (lockCount != 0) {
        ++lockCount;
        return isLocked();
    }
    if (!module || !resourceName || !resourceType) return 0;
    const auto searched = static_cast<HMODULE>(module);
    const HRSRC found = FindResourceA(searched, resourceName, resourceType);
    if (!found) return 0;
    const DWORD size = SizeofResource(searched, found);
    const HGLOBAL loaded = LoadResource(searched, found);
    if (!loaded) return 0;
    resourceData = loaded;
    dataAddress = static_cast<unsigned char*>(LockResource(loaded));
    dataSize = static_cast<long>(size);
    lockCount = 1;
    return isLocked();
}

int CCustomResource::unlock() {
    if (lockCount > 0 && --lockCount == 0) {
        FreeResource(resourceData);
        resourceData = nullptr;
        dataAddress = nullptr;
    }
    return isLocked();
}

void* CCustomResource::copyData() {
    const AutoCustomResource guard(*this);
    if (!isLocked()) return nullptr;
    const auto size = static_cast<std::size_t>(dataSize);
    tamrix::GlobalBlock block(GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, size ? size : 1));
    if (!block) return nullptr;
    if (size) {
        const tamrix::GlobalBlockLock copy(block.get());
        // dataSize is set even if the data could not be locked.
        if (!copy.bytes() || !dataAddress) return nullptr;
        std::memcpy(copy.bytes(), dataAddress, size);
    }
    return block.release();
}

AutoCustomResource::AutoCustomResource(CCustomResource& locked) : resource(&locked) {
    resource->lock();
}

AutoCustomResource::~AutoCustomResource() {
    resource->unlock();
}
