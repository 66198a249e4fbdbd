#pragma once

#include "kiv/KivObject.h"
#include "kiv/KivPositionView.h"

/// One literal of an enumeration type.
class __attribute__((visibility("default"))) KivTypeValue : public KivModelObject {
public:
    KivTypeValue();

    KivString value;
    std::int16_t position = 0;
};

/// A data type. One or more literals make it an enumeration.
class __attribute__((visibility("default"))) KivType : public KivModelObject {
public:
    /// The host's identifier of the data type, such as `INTEGER`; any other text for a type without one.
    [[nodiscard]] virtual const KivString& getDataType() const { return dataType; }
    /// Length or precision; 0 when there is none.
    [[nodiscard]] virtual int getLength() const { return length; }
    [[nodiscard]] virtual int getScale() const { return scale; }
    [[nodiscard]] virtual std::size_t getTypeValueCount() const { return typeValues.count(); }
    /// Fills `view` with the literals in ascending position.
    virtual void getTypeValueByPosition(KivTypeValueByPosition& view) const { view.fill(typeValues); }

    KivString dataType;
    int length = 0;
    int scale = 0;
    KivVector<KivTypeValue> typeValues;

protected:
    using KivModelObject::KivModelObject;
    void _depthTraversal(KivTraversalOperation& operation, void* context) override;
};

class __attribute__((visibility("default"))) KivConcreteType : public KivType {
protected:
    using KivType::KivType;
};

class __attribute__((visibility("default"))) KivBaseType : public KivConcreteType {
public:
    KivBaseType();
};

class __attribute__((visibility("default"))) KivDerivedType : public KivConcreteType {
public:
    KivDerivedType();
};

/// The older, ODBC-style identifier of a data type identifier (`INTEGER` gives `SQL_INTEGER`), or the empty text when
/// it has none.
[[nodiscard]] __attribute__((visibility("default"))) const char* getOldDataType(const KivString& dataType);

/// The C++ name of a type; the type's own name when its data type identifier is unknown. Valid until the type changes.
[[nodiscard]] __attribute__((visibility("default"))) const KivString& buildCppTypeName(const KivType* type);
