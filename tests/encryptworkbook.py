#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Writes workbooks with a password in LibreOffice.

encryptworkbook.py FILE...: each is an .xls, .xlsx or .ods file by its ending.
"""
import sys

import uno
from com.sun.star.beans import NamedValue

from fillsurvey import libreoffice, properties

# The filter of .xlsx ignores a Password; it takes the parameters of its cipher.
CIPHER = uno.Any("[]com.sun.star.beans.NamedValue",
                 (NamedValue("OOXPassword", "secret"), NamedValue("CryptoType", "Standard")))
FORMATS = {
    "xls": properties(FilterName="MS Excel 97", Password="secret"),
    "xlsx": properties(FilterName="Calc MS Excel 2007 XML", EncryptionData=CIPHER),
    "ods": properties(FilterName="calc8", Password="secret"),
}

with libreoffice() as desktop:
    document = desktop.loadComponentFromURL("private:factory/scalc", "_blank", 0, properties(Hidden=True))
    for path in sys.argv[1:]:
        document.storeToURL(uno.systemPathToFileUrl(path), FORMATS[path.rpartition(".")[2]])
    document.close(True)
