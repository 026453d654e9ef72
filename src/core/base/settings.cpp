#include "base/settings.h"

#include "base/number.h"

#include <QFileInfo>
#include <QSettings>

namespace vkm {

QString sectionName(Section section) {
    switch (section) {
    case Section::FileInfo:
        return QStringLiteral("FileInfo");
    case Section::General:
        return QStringLiteral("General");
    case Section::Location:
        return QStringLiteral("Location");
    }
    return {};
}

namespace {
QString keyPath(Section section, const QString& key) {
    return sectionName(section) + QLatin1Char('/') + key;
}
} // namespace

Settings::Settings(const QString& applicationName)
    : m_store(std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope, applicationName)) {}

Settings::Settings(std::unique_ptr<QSettings> store, bool isFile)
    : m_store(std::move(store)), m_isFile(isFile) {}

std::unique_ptr<Settings> Settings::inFile(const QString& iniPath) {
    return std::unique_ptr<Settings>(
        new Settings(std::make_unique<QSettings>(iniPath, QSettings::IniFormat), true));
}

Settings::~Settings() = default;

QString Settings::ReadReg(int sectionCode, const QString& key) const {
    if (sectionCode < 0 || sectionCode > 2)
        return {};
    return read(static_cast<Section>(sectionCode), key);
}

QString Settings::read(Section section, const QString& key) const {
    return m_store->value(keyPath(section, key)).toString();
}

bool Settings::contains(Section section, const QString& key) const {
    return m_store->contains(keyPath(section, key));
}

bool Settings::textToBool(const QString& text, bool* ok) {
    const QString t = text.trimmed();
    bool good = true;
    bool value = false;
    if (t.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0)
        value = true;
    else if (t.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0)
        value = false;
    else if (isNumeric(t))
        value = leadingNumber(t) != 0.0;
    else
        good = false;
    if (ok)
        *ok = good;
    return value;
}

bool Settings::readBool(Section section, const QString& key, bool fallback) const {
    bool ok = false;
    const bool v = textToBool(read(section, key), &ok);
    return ok ? v : fallback;
}

int Settings::readInt(Section section, const QString& key, int fallback) const {
    const QString t = read(section, key);
    if (!isNumeric(t))
        return fallback;
    return int(leadingInteger(t));
}

bool Settings::write(Section section, const QString& key, const QString& value) {
    m_store->setValue(keyPath(section, key), value);
    m_store->sync();
    return m_store->status() == QSettings::NoError;
}

bool Settings::writeBool(Section section, const QString& key, bool value) {
    return write(section, key, boolText(value));
}
bool Settings::writeInt(Section section, const QString& key, int value) {
    return write(section, key, QString::number(value));
}

bool Settings::ensure(Section section, const QString& key, const QString& defaultValue) {
    if (contains(section, key))
        return true;
    return write(section, key, defaultValue);
}

void Settings::SaveInitialPath(const QString& path) {
    write(Section::FileInfo, QStringLiteral("InitialPath"), path);
}

bool Settings::writeCompanionPath(const QString& exeFolder) {
    // Tests keep the companion value beside their own store.
    std::unique_ptr<QSettings> companion =
        m_isFile ? std::make_unique<QSettings>(QFileInfo(m_store->fileName()).absolutePath() +
                                                   QStringLiteral("/VKM_STP.ini"),
                                               QSettings::IniFormat)
                 : std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope,
                                               QStringLiteral("VKM_STP"));
    const QString key = QStringLiteral("SETTING/MYPATH");
    // Written at every start, but rewriting an unchanged value would only cost a disk sync.
    if (companion->contains(key) && companion->value(key).toString() == exeFolder)
        return true;
    companion->setValue(key, exeFolder);
    companion->sync();
    return companion->status() == QSettings::NoError;
}

QString Settings::fileName() const {
    return m_store->fileName();
}

} // namespace vkm
