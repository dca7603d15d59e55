// The real settings store, with a place for a test to make single calls fail.
#pragma once

#include "platform/SettingsStore.h"

#include <functional>
#include <memory>
#include <string>

namespace tarn::testing {

class ForwardingSettings : public SettingsStore {
public:
    explicit ForwardingSettings(std::unique_ptr<SettingsStore> store) : real(std::move(store)) {}

    // Asked before every call, with the verb and the key; true makes it fail: what is read is not
    // there, what is written is missing at the next flush.
    std::function<bool(const std::string& verb, const std::string& key)> onCall;

    std::string Read(const std::string& key, const std::string& fallback) const override {
        return Fails("read", key) ? fallback : real->Read(key, fallback);
    }
    bool Contains(const std::string& key) const override {
        return !Fails("contains", key) && real->Contains(key);
    }
    void Write(const std::string& key, const std::string& text) override {
        if (Fails("write", key))
            m_lost = true;
        else
            real->Write(key, text);
    }
    void Delete() override {
        if (Fails("delete", ""))
            m_lost = true;
        else
            real->Delete();
    }
    bool Flush() override {
        const bool flushed = !Fails("flush", "") && real->Flush() && !m_lost;
        m_lost = false;
        return flushed;
    }
    bool IsWritable() const override { return !Fails("writable", "") && real->IsWritable(); }
    std::string Location() const override { return real->Location(); }

private:
    bool Fails(const char* verb, const std::string& key) const {
        return onCall && onCall(verb, key);
    }

    std::unique_ptr<SettingsStore> real;
    bool m_lost = false;
};

} // namespace tarn::testing
