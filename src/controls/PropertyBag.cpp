#include "controls/PropertyBag.h"

namespace kelvora {

QVariant PropertyBag::ReadProperty(const QString& name, const QVariant& defaultValue) const {
    return m_values.value(name, defaultValue);
}

void PropertyBag::WriteProperty(const QString& name, const QVariant& value,
                                const QVariant& defaultValue) {
    if (value == defaultValue) {
        m_values.remove(name);
        return;
    }
    m_values.insert(name, value);
}

} // namespace kelvora
