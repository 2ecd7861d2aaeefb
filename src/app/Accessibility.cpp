#include "app/Accessibility.h"

#include "app/WindowChrome.h"
#include "controls/LightTab.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <functional>
#include <vector>

namespace kelvora {
namespace {

// A part of a control that is no widget of its own (a tab, one of the window buttons).
struct PartDescription {
    QAccessible::Role role;
    std::function<QString()> name;
    std::function<QRect()> rect; // in the control's coordinates
    std::function<bool()> selected;
    std::function<void()> press;
};

class AccessiblePart final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    AccessiblePart(QAccessibleInterface* parent, QWidget* control, PartDescription description)
        : m_parent(parent), m_control(control), m_description(std::move(description)) {}

    bool isValid() const override { return m_control != nullptr; }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return m_parent->window(); }
    QAccessibleInterface* focusChild() const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessibleInterface* parent() const override { return m_parent; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QString text(QAccessible::Text t) const override {
        return t == QAccessible::Name ? m_description.name() : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override {
        const QRect local = m_description.rect();
        return QRect(m_control->mapToGlobal(local.topLeft()), local.size());
    }
    QAccessible::Role role() const override { return m_description.role; }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.invisible = !m_control->isVisible();
        state.disabled = !m_control->isEnabled();
        if (m_description.selected) {
            state.selectable = true;
            state.selected = m_description.selected();
        }
        return state;
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }
    QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString& name) override {
        if (name == pressAction() && m_control->isEnabled()) {
            m_description.press();
        }
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    QAccessibleInterface* m_parent;
    QWidget* m_control;
    PartDescription m_description;
};

// AccessibleControl is a custom control with a role, a name and (optionally) parts.
class AccessibleControl : public QAccessibleWidget {
public:
    using DescribeParts = std::function<std::vector<PartDescription>()>;

    AccessibleControl(QWidget* widget, QAccessible::Role role, std::function<QString()> name,
                      std::function<void()> press, DescribeParts parts = {})
        : QAccessibleWidget(widget, role), m_name(std::move(name)), m_press(std::move(press)),
          m_describeParts(std::move(parts)) {}
    ~AccessibleControl() override { DropParts(); }

    QString text(QAccessible::Text t) const override {
        if (t == QAccessible::Name && widget()->accessibleName().isEmpty() && m_name) {
            return m_name();
        }
        return QAccessibleWidget::text(t);
    }
    int childCount() const override { return static_cast<int>(Parts().size()); }
    // The focus rests on the selected part (the active tab) while the control has it.
    QAccessibleInterface* focusChild() const override {
        if (widget()->window()->focusWidget() != widget()) {
            return nullptr;
        }
        for (int i = 0; i < childCount(); ++i) {
            if (child(i)->state().selected) {
                return child(i);
            }
        }
        return nullptr;
    }
    QAccessibleInterface* child(int index) const override {
        const auto& parts = Parts();
        return index >= 0 && index < static_cast<int>(parts.size())
                   ? QAccessible::accessibleInterface(parts[static_cast<std::size_t>(index)])
                   : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        const auto& parts = Parts();
        for (std::size_t i = 0; i < parts.size(); ++i) {
            if (QAccessible::accessibleInterface(parts[i]) == child) {
                return static_cast<int>(i);
            }
        }
        return -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        for (int i = 0; i < childCount(); ++i) {
            if (child(i)->rect().contains(x, y)) {
                return child(i);
            }
        }
        return nullptr;
    }
    QStringList actionNames() const override {
        QStringList names = QAccessibleWidget::actionNames();
        if (m_press) {
            names.prepend(pressAction());
        }
        return names;
    }
    void doAction(const QString& name) override {
        if (name == pressAction() && m_press && widget()->isEnabled()) {
            m_press();
            return;
        }
        QAccessibleWidget::doAction(name);
    }

private:
    // Parts are made once and kept, so their ids stay the same while the control lives.
    const std::vector<QAccessible::Id>& Parts() const {
        if (m_describeParts && m_parts.empty()) {
            auto* self = const_cast<AccessibleControl*>(this);
            for (PartDescription& part : m_describeParts()) {
                m_parts.push_back(QAccessible::registerAccessibleInterface(
                    new AccessiblePart(self, widget(), std::move(part))));
            }
        }
        return m_parts;
    }
    void DropParts() {
        for (const QAccessible::Id id : m_parts) {
            QAccessible::deleteAccessibleInterface(id);
        }
        m_parts.clear();
    }

    std::function<QString()> m_name;
    std::function<void()> m_press;
    DescribeParts m_describeParts;
    mutable std::vector<QAccessible::Id> m_parts;
};

std::vector<PartDescription> TabsOf(LightTab* strip) {
    std::vector<PartDescription> tabs;
    for (int i = 0; i < strip->NumberOfTabs(); ++i) {
        tabs.push_back({QAccessible::PageTab, [strip, i] { return strip->Caption(i); },
                        [strip, i] { return strip->TabRect(i); },
                        [strip, i] { return strip->ActiveTab() == i; },
                        [strip, i] { strip->SetActiveTab(i); }});
    }
    return tabs;
}

std::vector<PartDescription> ButtonsOf(ControlBox* box) {
    const auto part = [box](bool minimise) {
        return QRect(minimise ? 0 : ControlBox::kMinimiseWidth, 0,
                     minimise ? ControlBox::kMinimiseWidth
                              : box->width() - ControlBox::kMinimiseWidth,
                     box->height());
    };
    return {{QAccessible::Button,
             [box] { return box->property("minimiseName").toString(); },
             [part] { return part(true); },
             {},
             [box] { emit box->MinimiseRequested(); }},
            {QAccessible::Button,
             [box] { return box->property("closeName").toString(); },
             [part] { return part(false); },
             {},
             [box] { emit box->CloseRequested(); }}};
}

QAccessibleInterface* Factory(const QString& className, QObject* object) {
    if (className == QLatin1String("kelvora::LightTab")) {
        auto* strip = static_cast<LightTab*>(object);
        return new AccessibleControl(strip, QAccessible::PageTabList, {}, {},
                                     [strip] { return TabsOf(strip); });
    }
    if (className == QLatin1String("kelvora::FlagImage")) {
        auto* flag = static_cast<FlagImage*>(object);
        return new AccessibleControl(flag, QAccessible::Button, {},
                                     [flag] { emit flag->Clicked(); });
    }
    if (className == QLatin1String("kelvora::ClickLabel")) {
        auto* link = static_cast<ClickLabel*>(object);
        return new AccessibleControl(
            link, QAccessible::Link, [link] { return link->text(); },
            [link] { emit link->Clicked(); });
    }
    if (className == QLatin1String("kelvora::ControlBox")) {
        auto* box = static_cast<ControlBox*>(object);
        return new AccessibleControl(box, QAccessible::Grouping, {}, {},
                                     [box] { return ButtonsOf(box); });
    }
    return nullptr;
}

} // namespace

void NotifyTabSelected(LightTab* strip, int tab) {
    if (!QAccessible::isActive()) {
        return;
    }
    QAccessibleEvent selected(strip, QAccessible::Selection);
    selected.setChild(tab);
    QAccessible::updateAccessibility(&selected);
    if (strip->hasFocus()) {
        QAccessibleEvent focus(strip, QAccessible::Focus);
        focus.setChild(tab);
        QAccessible::updateAccessibility(&focus);
    }
}

void InstallAccessibility() {
    static bool installed = false;
    if (!installed) {
        QAccessible::installFactory(Factory);
        installed = true;
    }
}

} // namespace kelvora
