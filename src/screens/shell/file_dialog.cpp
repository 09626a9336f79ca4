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
    Answer(QObject *dialog, const char *property, platform::FileChosen chosen)
        : QObject(dialog)
        , m_dialog(dialog)
        , m_property(property)
        , m_chosen(std::move(chosen))
    {
        connect(dialog, SIGNAL(accepted()), this, SLOT(accept()));
        connect(dialog, SIGNAL(rejected()), dialog, SLOT(deleteLater()));
    }

private Q_SLOTS:
    void accept()
    {
        const QUrl file = m_dialog->property(m_property).toUrl();
        m_dialog->deleteLater();
        if (file.isLocalFile())
            m_chosen(file.toLocalFile());
    }

private:
    QObject *m_dialog;
    const char *m_property; ///< of the dialog, that holds what was chosen
    platform::FileChosen m_chosen;
};

} // namespace

FileDialog::FileDialog(QQmlEngine &engine, QQuickWindow *window)
    : m_engine(engine)
    , m_window(window)
    , m_guard([this](const platform::FileQuestion &question, const platform::FileChosen &chosen) {
        ask(question, chosen);
    })
{}

void FileDialog::ask(const platform::FileQuestion &question, const platform::FileChosen &chosen)
{
    if (m_dialog)
        return;
    const bool forFolder = question.kind == platform::FileQuestion::Kind::Folder;
    const QString file = forFolder ? u"FolderChooser"_s : u"FileChooser"_s;
    QVariantMap properties = {{u"title"_s, question.message},
                              {u"parentWindow"_s, QVariant::fromValue(m_window)}};
    if (!question.acceptLabel.isEmpty())
        properties.insert(u"acceptLabel"_s, question.acceptLabel);
    QQmlComponent component(&m_engine, QUrl(u"qrc:/qt/qml/Tarnwick/Screens/%1.qml"_s.arg(file)));
    QObject *dialog = component.createWithInitialProperties(properties);
    if (!dialog) {
        qWarning("%s", qPrintable(component.errorString()));
        return;
    }
    m_dialog = dialog;
    dialog->setParent(this);
    new Answer(dialog, forFolder ? "selectedFolder" : "selectedFile", chosen);
    QMetaObject::invokeMethod(dialog, "open");
}

} // namespace tarnwick

#include "file_dialog.moc"
