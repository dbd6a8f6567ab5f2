// A text window to dictate into. Prints its content to standard output, one line per change. It can be made slow, or
// read-only so that it refuses a paste.

#include <QApplication>
#include <QPlainTextEdit>
#include <QThread>

#include <cstdio>

namespace {

QString escaped(const QString &text)
{
    QString line = text;
    line.replace(QLatin1Char('\\'), QLatin1String("\\\\")).replace(QLatin1Char('\n'), QLatin1String("\\n"));
    return line;
}

/// Sleeps before it handles a key, like a busy program.
class SlowEditor final : public QPlainTextEdit {
public:
    explicit SlowEditor(unsigned long delay)
        : m_delay(delay)
    {
    }

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        if (m_delay > 0) {
            QThread::msleep(m_delay);
        }
        QPlainTextEdit::keyPressEvent(event);
    }

private:
    unsigned long m_delay;
};

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    SlowEditor editor(arguments.value(2).toULong());
    editor.setWindowTitle(arguments.value(1, QStringLiteral("Notes")));
    auto font = editor.font();
    font.setPointSize(14);
    editor.setFont(font);
    editor.resize(640, 320);
    QObject::connect(&editor, &QPlainTextEdit::textChanged, &editor, [&editor] {
        std::printf("text: %s\n", escaped(editor.toPlainText()).toUtf8().constData());
        std::fflush(stdout);
    });
    editor.setReadOnly(arguments.value(3) == QLatin1String("readonly"));
    if (arguments.value(3) == QLatin1String("fullscreen")) {
        editor.showFullScreen();
    } else {
        editor.show();
    }
    return QApplication::exec();
}
