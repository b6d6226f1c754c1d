// SPDX-License-Identifier: GPL-3.0-or-later
#undef signals // a member of a structure in these headers
#include <libsecret/secret.h>

#include "platform/desktop/secret.h"

#include <QLibrary>

using namespace Qt::StringLiterals;

namespace desktop {
namespace {

/// The service's library, loaded at the first use: most programs never need it.
struct Service {
    QLibrary library{u"secret-1"_s, 0};
    template <class Function> Function function(const char* name) {
        return reinterpret_cast<Function>(library.resolve(name));
    }
    decltype(&secret_password_lookup_sync) lookup = function<decltype(lookup)>("secret_password_lookup_sync");
    decltype(&secret_password_store_sync) store = function<decltype(store)>("secret_password_store_sync");
    decltype(&secret_password_clear_sync) clear = function<decltype(clear)>("secret_password_clear_sync");
    decltype(&secret_password_free) release = function<decltype(release)>("secret_password_free");
    bool isThere() const { return lookup && store && clear && release; }
};

Service& service() {
    static Service loaded;
    return loaded;
}

const SecretSchema schema = {"io.github.gaugewell.Store",
                             SECRET_SCHEMA_NONE,
                             {{"server", SECRET_SCHEMA_ATTRIBUTE_STRING},
                              {"database", SECRET_SCHEMA_ATTRIBUTE_STRING},
                              {"user", SECRET_SCHEMA_ATTRIBUTE_STRING},
                              {nullptr, SECRET_SCHEMA_ATTRIBUTE_STRING}},
                             0,
                             nullptr,
                             nullptr,
                             nullptr,
                             nullptr,
                             nullptr,
                             nullptr,
                             nullptr};

/// The attributes as the library takes them.
struct Attributes {
    explicit Attributes(const SecretKey& key)
        : server(key.server.toUtf8()), database(key.database.toUtf8()), user(key.user.toUtf8()) {}
    QByteArray server;
    QByteArray database;
    QByteArray user;
};

std::optional<QString> findSecret(const SecretKey& key) {
    if (!service().isThere())
        return {};
    const Attributes of(key);
    char* found = service().lookup(&schema, nullptr, nullptr, "server", of.server.constData(), "database",
                                   of.database.constData(), "user", of.user.constData(), nullptr);
    if (!found)
        return {};
    std::optional<QString> password = QString::fromUtf8(found);
    service().release(found);
    return password;
}

bool keepSecret(const SecretKey& key, const QString& label, const QString& password) {
    const Attributes of(key);
    return service().isThere() &&
           service().store(&schema, SECRET_COLLECTION_DEFAULT, label.toUtf8().constData(),
                           password.toUtf8().constData(), nullptr, nullptr, "server", of.server.constData(),
                           "database", of.database.constData(), "user", of.user.constData(), nullptr);
}

void forgetSecret(const SecretKey& key) {
    const Attributes of(key);
    if (service().isThere())
        service().clear(&schema, nullptr, nullptr, "server", of.server.constData(), "database",
                        of.database.constData(), "user", of.user.constData(), nullptr);
}

} // namespace

std::function<std::optional<QString>(const SecretKey&)> findSecretHook = findSecret;
std::function<bool(const SecretKey&, const QString&, const QString&)> keepSecretHook = keepSecret;
std::function<void(const SecretKey&)> forgetSecretHook = forgetSecret;

} // namespace desktop
