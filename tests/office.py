#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Runs LibreOffice. As a program it writes workbooks with a password.

office.py FILE...: each is an .xls, .xlsx or .ods file by its ending. Needs libreoffice-calc-nogui and python3-uno.
"""
import contextlib
import os
import subprocess
import sys
import tempfile
import time

import uno
from com.sun.star.beans import NamedValue, PropertyValue
from com.sun.star.connection import NoConnectException


def connect(pipe):
    local = uno.getComponentContext()
    resolver = local.ServiceManager.createInstanceWithContext("com.sun.star.bridge.UnoUrlResolver", local)
    for _ in range(2000):  # tenths of a second
        try:
            context = resolver.resolve("uno:pipe,name=%s;urp;StarOffice.ComponentContext" % pipe)
            return context.ServiceManager.createInstanceWithContext("com.sun.star.frame.Desktop", context)
        except NoConnectException:
            time.sleep(0.1)
    sys.exit("LibreOffice does not answer")


def properties(**values):
    return tuple(PropertyValue(Name=name, Value=value) for name, value in values.items())


@contextlib.contextmanager
def libreoffice():
    """Starts a LibreOffice with its own profile, yields its desktop and ends it."""
    pipe = "office_%d" % os.getpid()
    with tempfile.TemporaryDirectory() as profile:
        office = subprocess.Popen(["soffice", "-env:UserInstallation=file://" + profile, "--headless", "--norestore",
                                   "--nologo", "--accept=pipe,name=%s;urp;" % pipe],
                                  stdout=subprocess.DEVNULL)
        try:
            desktop = connect(pipe)
            yield desktop
        finally:
            try:
                desktop.terminate()
            except Exception:  # it never answered, or ended before it replied
                office.kill()
            office.wait()


def write_encrypted(desktop, paths):
    # The filter of .xlsx ignores a Password; it takes the parameters of its cipher.
    cipher = uno.Any("[]com.sun.star.beans.NamedValue",
                     (NamedValue("OOXPassword", "secret"), NamedValue("CryptoType", "Standard")))
    formats = {"xls": properties(FilterName="MS Excel 97", Password="secret"),
               "xlsx": properties(FilterName="Calc MS Excel 2007 XML", EncryptionData=cipher),
               "ods": properties(FilterName="calc8", Password="secret")}
    document = desktop.loadComponentFromURL("private:factory/scalc", "_blank", 0, properties(Hidden=True))
    for path in paths:
        document.storeToURL(uno.systemPathToFileUrl(path), formats[path.rpartition(".")[2]])
    document.close(True)


if __name__ == "__main__":
    with libreoffice() as office_desktop:
        write_encrypted(office_desktop, sys.argv[1:])
