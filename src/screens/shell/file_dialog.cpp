#include "screens/shell/file_dialog.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// Passes on what the dialog says, and ends with it.
class Answer : public QObject
{
    Q_OBJECT

public:
    Answer(QObject *dialog, platform::FileChosen chosen)
        : QObject(dialog)
        , m_dialog(dialog)
        , m_chosen(std::move(chosen))
    {
        connect(dialog, SIGNAL(accepted()), this, SLOT(accept()));
        connect(dialog, SIGNAL(rejected()), dialog, SLOT(deleteLater()));
    }

private Q_SLOTS:
    void accept()
    {
        const QUrl file = m_dialog->property("selectedFile").toUrl();
        m_dialog->deleteLater();
        if (file.isLocalFile())
            m_chosen(file.toLocalFile());
    }

private:
    QObject *m_dialog;
    platform::FileChosen m_chosen;
};

} // namespace

FileDialog::FileDialog(QQmlEngine &engine, QQuickWindow *window)
    : m_engine(engine)
    , m_window(window)
    , m_guard([this](const QString &message, const platform::FileChosen &chosen) {
        ask(message, chosen);
    })
{}

void FileDialog::ask(const QString &message, const platform::FileChosen &chosen)
{
    QQmlComponent component(&m_engine, QUrl(u"qrc:/qt/qml/Tarnwick/Screens/FileChooser.qml"_s));
    QObject *dialog = component.createWithInitialProperties(
        {{u"title"_s, message}, {u"parentWindow"_s, QVariant::fromValue(m_window)}});
    if (!dialog) {
        qWarning("%s", qPrintable(component.errorString()));
        return;
    }
    dialog->setParent(this);
    new Answer(dialog, chosen);
    QMetaObject::invokeMethod(dialog, "open");
}

} // namespace tarnwick

#include "file_dialog.moc"
