// The root of run-time typed objects.
#include "toolbox/runtime_class.h"

#include <ostream>

constinit const CRuntimeClass CObject::classCObject{"CObject", nullptr};

bool CRuntimeClass::IsDerivedFrom(const CRuntimeClass* base) const {
    const CRuntimeClass* each = this;
    while (each && each != base) each = each->m_pBaseClass;
    return each;
}

CObject::~CObject() = default;

const CRuntimeClass* CObject::GetRuntimeClass() const {
    return &classCObject;
}

void CObject::Serialize(std::iostream&) {}

void CObject::AssertValid() const {}

void CObject::Dump(std::ostream& out) const {
    out << "a " << GetRuntimeClass()->m_lpszClassName << '\n';
}

bool CObject::IsKindOf(const CRuntimeClass* type) const {
    return GetRuntimeClass()->IsDerivedFrom(type);
}
