#include "base/settings.h"

#include "base/number.h"

#include <QFileInfo>
#include <QSettings>
#include <algorithm>
#include <cmath>

namespace vkm {

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

bool Settings::value(const BoolKey& key) const {
    bool ok = false;
    const bool v = textToBool(read(key.section, QLatin1String(key.name)), &ok);
    return ok ? v : key.defaultValue;
}

int Settings::value(const IntKey& key) const {
    const QString t = read(key.section, QLatin1String(key.name)).trimmed();
    if (!isNumeric(t))
        return key.defaultValue;
    const double v = leadingNumber(t);
    if (v < double(key.min) || v > double(key.max))
        return key.defaultValue;
    return int(std::lround(v));
}

QString Settings::value(const TextKey& key) const {
    return read(key.section, QLatin1String(key.name));
}

bool Settings::write(Section section, const QString& key, const QString& value) {
    m_store->setValue(keyPath(section, key), value);
    m_store->sync();
    return m_store->status() == QSettings::NoError;
}

bool Settings::set(const BoolKey& key, bool value) {
    return write(key.section, QLatin1String(key.name), boolText(value));
}

bool Settings::set(const IntKey& key, int value) {
    return write(key.section, QLatin1String(key.name), QString::number(std::clamp(value, key.min, key.max)));
}

bool Settings::set(const TextKey& key, const QString& value) {
    return write(key.section, QLatin1String(key.name), value);
}

bool Settings::ensure(Section section, const QString& key, const QString& defaultValue) {
    if (contains(section, key))
        return true;
    return write(section, key, defaultValue);
}

bool Settings::ensure(const BoolKey& key) {
    return ensure(key.section, QLatin1String(key.name), boolText(key.defaultValue));
}

bool Settings::ensure(const IntKey& key) {
    return ensure(key.section, QLatin1String(key.name), QString::number(key.defaultValue));
}

void Settings::SaveInitialPath(const QString& path) {
    set(keys::InitialPath, path);
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
