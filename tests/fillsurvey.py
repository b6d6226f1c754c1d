#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Fills survey files in LibreOffice as respondents would, and saves them in place as Excel 97 workbooks.

fillsurvey.py FILE MARKS [FILE MARKS]...

MARKS is a JSON object: cell of Sheet1 to number or text. Exits with status 1 and leaves the file unchanged if one of
these cells is locked, or if the first question, its last score or its key is not.
Needs libreoffice-calc-nogui and python3-uno.
"""
import contextlib
import json
import os
import subprocess
import sys
import tempfile
import time

import uno
from com.sun.star.beans import PropertyValue
from com.sun.star.connection import NoConnectException


def connect(pipe, office):
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


def fill(desktop, path, marks):
    url = uno.systemPathToFileUrl(os.path.abspath(path))
    document = desktop.loadComponentFromURL(url, "_blank", 0, properties(Hidden=True))
    try:
        sheet = document.Sheets.getByName("Sheet1")
        for address in ["B14", "E14", "I14"] + list(marks):
            locked = sheet.isProtected() and sheet.getCellRangeByName(address).CellProtection.IsLocked
            if locked == (address in marks):
                sys.exit("%s is %s" % (address, "locked" if locked else "open"))
        for address, value in marks.items():
            cell = sheet.getCellRangeByName(address)
            cell.setString(value) if isinstance(value, str) else cell.setValue(value)
        document.storeToURL(url, properties(FilterName="MS Excel 97", Overwrite=True))
    finally:
        document.close(True)


@contextlib.contextmanager
def libreoffice():
    """Starts a LibreOffice with its own profile, yields its desktop and ends it."""
    pipe = "fillsurvey_%d" % os.getpid()
    with tempfile.TemporaryDirectory() as profile:
        office = subprocess.Popen(["soffice", "-env:UserInstallation=file://" + profile, "--headless", "--norestore",
                                   "--nologo", "--accept=pipe,name=%s;urp;" % pipe],
                                  stdout=subprocess.DEVNULL)
        try:
            desktop = connect(pipe, office)
            yield desktop
        finally:
            try:
                desktop.terminate()
            except Exception:  # it never answered, or ended before it replied
                office.kill()
            office.wait()


if __name__ == "__main__":
    with libreoffice() as office_desktop:
        for survey_file, typed in zip(sys.argv[1::2], sys.argv[2::2]):
            fill(office_desktop, survey_file, json.loads(typed))
