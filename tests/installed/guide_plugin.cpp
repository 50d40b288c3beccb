// Brings the guide into a console that was not built with it: the toolkit loads it as it would the
// driver of an input device.
//
//     QT_PLUGIN_PATH=build/dev/guide QT_QPA_GENERIC_PLUGINS=orviaguide orvia
#include <QGenericPlugin>

#include "installed/guide.h"

class GuidePlugin final : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "guide.json")

 public:
    QObject* create(const QString& /*key*/, const QString& /*options*/) override {
        installed::StartWalk();
        return new QObject;
    }
};

#include "guide_plugin.moc"
