#pragma once

#include "base/settingkeys.h"

#include <QString>
#include <memory>

class QSettings;

namespace vkm {

// The per-user settings store: application name (the executable's base name),
// section and key; every value is text, booleans are the words True and False.
// Every write goes to the store at once.
class Settings {
public:
    // The user's native store for the given application name.
    explicit Settings(const QString& applicationName);
    // A store in an INI file (tests, never the user's store).
    static std::unique_ptr<Settings> inFile(const QString& iniPath);
    ~Settings();

    // One value as text; "" when missing. Section codes: 0 FileInfo, 1 General, 2 Location.
    QString ReadReg(int sectionCode, const QString& key) const;
    QString read(Section section, const QString& key) const;
    bool contains(Section section, const QString& key) const;

    // Typed values of the key table (settingkeys.h). A stored text that does not convert,
    // or an integer outside the key's range, reads as the key's default.
    bool value(const BoolKey& key) const;
    int value(const IntKey& key) const;
    QString value(const TextKey& key) const;
    template <typename Key> bool contains(const Key& key) const {
        return contains(key.section, QLatin1String(key.name));
    }

    // Stores the value; false when the store cannot be written. Integers are clamped
    // into the key's range.
    bool write(Section section, const QString& key, const QString& value);
    bool set(const BoolKey& key, bool value);
    bool set(const IntKey& key, int value);
    bool set(const TextKey& key, const QString& value);

    // Makes sure the value exists, storing the default when it is missing.
    bool ensure(Section section, const QString& key, const QString& defaultValue);
    bool ensure(const BoolKey& key);
    bool ensure(const IntKey& key);

    // Makes sure every value of the start-up table exists (see regdata.cpp).
    // mainWindowWidthTwips: width of the main window, for the default of CustomEasy_Left.
    bool CheckRegData(int mainWindowWidthTwips = 0);

    // "FileInfo"/InitialPath.
    void SaveInitialPath(const QString& path);

    // Companion value read by the other tools of the machine: "VKM_STP"/"SETTING"/"MYPATH".
    // Written to the native store unless this is a file store (tests).
    bool writeCompanionPath(const QString& exeFolder);

    QString fileName() const;

    static QString boolText(bool value) { return value ? QStringLiteral("True") : QStringLiteral("False"); }
    static bool textToBool(const QString& text, bool* ok = nullptr);

private:
    explicit Settings(std::unique_ptr<QSettings> store, bool isFile);
    std::unique_ptr<QSettings> m_store;
    bool m_isFile = false;
};

} // namespace vkm
