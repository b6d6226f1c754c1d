// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/support/text.h"

#include <QProcess>
#include <QTemporaryDir>

/// Two authorities, "authority" and "stranger", and the first one's certificates of this computer, "here", of
/// another, "elsewhere", and of this one in the past, "expired".
class Certificates {
public:
    Certificates() {
        QProcess openssl;
        openssl.setWorkingDirectory(folder.path());
        openssl.start(u"sh"_s, {u"-ec"_s, QString::fromLatin1(script)});
        openssl.waitForFinished(30000);
    }
    QString file(const QString& name) const { return folder.filePath(name + u".pem"_s); }
    /// The options of a server that listens on 127.0.0.1 and shows that certificate.
    QStringList options(int port, const QString& name = u"here"_s) const {
        return {u"--bind-address=127.0.0.1"_s, u"--port=%1"_s.arg(port),
                u"--ssl-ca="_s + file(u"authority"_s), u"--ssl-cert="_s + file(name),
                u"--ssl-key="_s + file(name)};
    }

private:
    /// A file holds the key and the certificate.
    static constexpr const char* script =
        "key() { openssl req -new -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -keyout $1.key "
        "-subj /CN=$1 -out $1.req; }\n"
        "sign() { echo \"subjectAltName=$2\" > names\n"
        "  key $1; openssl x509 -req -in $1.req -CA authority.pem -CAkey authority.key -CAcreateserial "
        "-days $3 -extfile names -out $1.crt; cat $1.crt $1.key > $1.pem; }\n"
        "for name in authority stranger; do\n"
        "  openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 "
        "-subj /CN=$name -keyout $name.key -out $name.pem; done\n"
        "sign here DNS:localhost,IP:127.0.0.1 2\n"
        "sign elsewhere DNS:elsewhere.example 2\n"
        "sign expired DNS:localhost,IP:127.0.0.1 -1\n";

    QTemporaryDir folder;
};
