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
    // The order of these is part of the interface too.

    /// The host's identifier of the data type, such as `INTEGER`; any other text for a type without one.
    [[nodiscard]] virtual const KivString& getDataType() const { return dataType; }
    /// Length or precision; 0 when there is none.
    [[nodiscard]] virtual int getLength() const { return length; }
    [[nodiscard]] virtual int getScale() const { return scale; }
    /// Empty.
    [[nodiscard]] virtual KivString getInitialValue() const;
    /// 0.
    [[nodiscard]] virtual int getLowerBound() const;
    /// -1: unlimited.
    [[nodiscard]] virtual int getUpperBound() const;
    /// False.
    [[nodiscard]] virtual bool getUserDefined() const;
    /// Empty.
    [[nodiscard]] virtual KivString getNativeDataType() const;
    /// Empty.
    [[nodiscard]] virtual KivString getUserDataType() const;
    /// Empty.
    [[nodiscard]] virtual KivString getNativeLogicalDataType() const;
    /// The type that this one stands for: itself.
    [[nodiscard]] virtual const KivType* getActualType() const;
    [[nodiscard]] virtual std::size_t getTypeValueCount() const { return typeValues.count(); }
    [[nodiscard]] virtual bool containsTypeValue(const KivTypeValue* value) const;
    /// The literal at `index` in collection order; null when there is none.
    [[nodiscard]] virtual KivTypeValue* getTypeValue(int index) const;
    /// The first literal of that exact name, or null. Its index goes to `index` unless that is null; it is left as it
    /// was when there is no such literal.
    [[nodiscard]] virtual KivTypeValue* getTypeValue(const KivString& name, int* index) const;
    /// Fills `view` with the literals in ascending position.
    virtual void getTypeValueByPosition(KivTypeValueByPosition& view) const { view.fill(typeValues); }
    void _depthTraversal(KivTraversalOperation& operation, void* context) override;

    KivString dataType;
    int length = 0;
    int scale = 0;
    KivVector<KivTypeValue> typeValues;

protected:
    explicit KivType(KivElementType code = KivElementType::Type);
};

class __attribute__((visibility("default"))) KivConcreteType : public KivType {
protected:
    explicit KivConcreteType(KivElementType code = KivElementType::ConcreteType);
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
