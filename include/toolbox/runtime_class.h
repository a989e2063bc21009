// Run-time typed objects: the root class from which commands are derived.
#pragma once

#include <iosfwd>

#include "toolbox/export.h"

/// One per class, which every object of the class points to.
struct TB_API CRuntimeClass {
    const char* m_lpszClassName;        ///< of the class
    const CRuntimeClass* m_pBaseClass;  ///< null for CObject

    /// True for the class itself as well.
    [[nodiscard]] bool IsDerivedFrom(const CRuntimeClass* base) const;
};

/// The root class. Its objects are not copied.
class TB_API CObject {
  public:
    CObject() = default;
    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;

    /// The class of the object itself: each derived class has its own answer.
    virtual const CRuntimeClass* GetRuntimeClass() const;
    virtual ~CObject();
    /// Stores or restores the object; does nothing here.
    virtual void Serialize(std::iostream& archive);
    /// Checks the object's state; does nothing here.
    virtual void AssertValid() const;
    /// Writes the name of the object's class.
    virtual void Dump(std::ostream& out) const;

    /// True when the object is of this class or of one derived from it.
    [[nodiscard]] bool IsKindOf(const CRuntimeClass* type) const;

    /// What objects of the class itself answer.
    static const CRuntimeClass classCObject;
};
