#pragma once

#include <QString>
#include <QVariant>
#include <QVariantMap>

namespace kelvora {

// PropertyBag is a form's property store for its custom controls. Each property lives under its
// own name and is written and read with a default, so a value equal to its default is never
// stored: the store holds only what differs from a freshly placed control.
class PropertyBag {
public:
    // ReadProperty returns the stored value of name, or defaultValue when none is stored.
    QVariant ReadProperty(const QString& name, const QVariant& defaultValue) const;
    // WriteProperty stores value under name, or removes name when value equals defaultValue.
    void WriteProperty(const QString& name, const QVariant& value, const QVariant& defaultValue);

    const QVariantMap& Values() const { return m_values; }

private:
    QVariantMap m_values;
};

} // namespace kelvora
