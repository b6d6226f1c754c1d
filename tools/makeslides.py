#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""makeslides.py: makes home/gettingstarted.pps, a PowerPoint 97-2003 slide show, and the topic of the help that shows the same
slides from docs/gettingstarted.md.
makeslides.py GRABS: first updates the pictures of the slides from a folder that tools/grab has filled, cropped to the form
and with few colours. Needs the packages of the group "slides"."""
import base64, re, subprocess, sys, tempfile
from html import escape
from pathlib import Path

DOCS = Path(__file__).resolve().parent.parent / "docs"
HOME = DOCS.parent / "home"
GRABBED = {"customers": "frmCustomer", "parameters": "frmParameter", "select": "frmSelectSurvey", "newsurvey": "frmNewSurvey",
           "feedback": "frmFeedBackObj", "index": "frmSatisfactionIndex-chart", "matrix": "frmPerformanceMatrix-chart",
           "plan": "frmImprovementPlan"}
COLOURS = 64
# Centimetres.
WIDTH, HEIGHT = 28, 15.75
EDGE, TOP, GAP = 1.0, 2.6, 0.4
INSET = 0.25  # of text in its box
PICTURE_WIDTH, PICTURE_HEIGHT = 17.6, 12.2
LARGEST_PIXEL = 0.022
HELP_WIDTH = 560  # pixels

HEAD = """<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:style="urn:oasis:names:tc:opendocument:xmlns:style:1.0" xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0"
 xmlns:draw="urn:oasis:names:tc:opendocument:xmlns:drawing:1.0"
 xmlns:fo="urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0"
 xmlns:svg="urn:oasis:names:tc:opendocument:xmlns:svg-compatible:1.0"
 xmlns:presentation="urn:oasis:names:tc:opendocument:xmlns:presentation:1.0"
 office:version="1.2" office:mimetype="application/vnd.oasis.opendocument.presentation">
<office:automatic-styles>
<style:page-layout style:name="page"><style:page-layout-properties fo:margin="0cm" fo:page-width="{width}cm"
 fo:page-height="{height}cm" style:print-orientation="landscape"/></style:page-layout>
<style:style style:name="white" style:family="drawing-page"><style:drawing-page-properties draw:fill="solid"
 draw:fill-color="#ffffff" presentation:background-visible="true"/></style:style>
<style:style style:name="blue" style:family="drawing-page"><style:drawing-page-properties draw:fill="solid"
 draw:fill-color="#14507d" presentation:background-visible="true"/></style:style>
<style:style style:name="box" style:family="graphic"><style:graphic-properties draw:fill="none" draw:stroke="none"
 draw:auto-grow-height="false" draw:fit-to-size="false" fo:padding="0cm" draw:textarea-vertical-align="top"/></style:style>
{paragraphs}
<style:style style:name="bold" style:family="text"><style:text-properties fo:font-weight="bold"/></style:style>
</office:automatic-styles>
<office:master-styles><style:master-page style:name="master" style:page-layout-name="page" draw:style-name="white"/>
</office:master-styles>
<office:body><office:presentation>
"""
PARAGRAPH = """<style:style style:name="{}" style:family="paragraph"><style:paragraph-properties
 fo:margin-bottom="{}cm" fo:margin-left="{indent}cm" fo:text-indent="-{indent}cm"/><style:text-properties fo:font-family="Verdana" fo:font-size="{}pt" fo:color="{}"
 fo:font-weight="{}"/></style:style>"""
PARAGRAPHS = "\n".join(PARAGRAPH.format(*style, indent=0.6 if style[0] == "alone" else 0) for style in (
    ("heading", 0, 26, "#14507d", "bold"), ("beside", 0.35, 15, "#202020", "normal"), ("alone", 0.5, 20, "#202020", "normal"),
    ("opening", 1, 36, "#ffffff", "bold"), ("subtitle", 0, 22, "#ffffff", "normal"), ("number", 0, 10, "#606060", "normal")))


def box(x, y, width, height, content):
    return (f'<draw:frame draw:style-name="box" svg:x="{x:.3f}cm" svg:y="{y:.3f}cm" svg:width="{width:.3f}cm"'
            f' svg:height="{height:.3f}cm">{content}</draw:frame>\n')


def text(style, lines):
    def paragraph(line):
        marked = re.sub(r"\*\*(.*?)\*\*", r'<text:span text:style-name="bold">\1</text:span>', escape(line))
        bullet = "\u2022<text:tab/>" if style == "alone" else ""
        return f'<text:p text:style-name="{style}">{bullet}{marked}</text:p>'
    return f'<draw:text-box>{"".join(map(paragraph, lines))}</draw:text-box>'


def picture(name, title):
    """The frame of a picture, as large as possible up to LARGEST_PIXEL."""
    data = (DOCS / name).read_bytes()
    pixels = [int.from_bytes(data[at:at + 4], "big") for at in (16, 20)]  # PNG header
    scale = min(PICTURE_WIDTH / pixels[0], PICTURE_HEIGHT / pixels[1], LARGEST_PIXEL)
    width, height = (scale * side for side in pixels)
    image = f"<draw:image><office:binary-data>{base64.b64encode(data).decode()}</office:binary-data></draw:image>"
    return box(EDGE + INSET, TOP, width, height, image + f"<svg:title>{escape(title)}</svg:title>")


def slide(number, count, source):
    heading, _, body = source.partition("\n")
    image = re.search(r"^!\[(.*)\]\((.*)\)$", body, re.MULTILINE)
    points = re.findall(r"^- (.*)$", body, re.MULTILINE)
    inner = WIDTH - 2 * EDGE
    if number == 1:
        content = box(EDGE, 5, inner, 2, text("opening", [heading])) + box(EDGE, 7.5, inner, 2, text("subtitle", [body.strip()]))
        return f'<draw:page draw:name="{number}" draw:master-page-name="master" draw:style-name="blue">{content}</draw:page>\n'
    content = box(EDGE, 0.7, inner, 1.3, text("heading", [heading]))
    if image:
        left = EDGE + INSET + PICTURE_WIDTH + GAP
        content += picture(image[2], image[1])
        content += box(left, TOP, WIDTH - EDGE - left, PICTURE_HEIGHT, text("beside", points))
    else:
        content += box(EDGE, TOP, inner, PICTURE_HEIGHT, text("alone", points))
    content += box(WIDTH - EDGE - 2, HEIGHT - 1, 2, 0.7, text("number", [f"{number} / {count}"]))
    return f'<draw:page draw:name="{number}" draw:master-page-name="master" draw:style-name="white">{content}</draw:page>\n'


def take_pictures(grabs):
    from PIL import Image, ImageChops
    for name, grabbed in GRABBED.items():
        window = Image.open(grabs / f"{grabbed}.png").convert("RGB")
        empty = window.getpixel((window.width - 20, window.height - 40))  # background of the main window
        area = window.crop((0, 58, window.width, window.height - 30))  # without menus and status bar
        edges = ImageChops.difference(area, Image.new("RGB", area.size, empty)).getbbox()
        area.crop(edges).quantize(COLOURS, dither=Image.Dither.NONE).save(HOME / f"slides/{name}.png", optimize=True)


def topic(sources):
    """The slides as the text of a topic; a slide is a heading, a picture if it has one, and its points."""
    lines = []
    for source in sources:
        heading, _, body = source.partition("\n")
        lines.append(f"<h3>{escape(heading)}</h3>")
        if image := re.search(r"^!\[(.*)\]\(\.\./home/(.*)\)$", body, re.MULTILINE):
            lines.append(f'<p><img src="{image[2]}" alt="{escape(image[1])}" width="{HELP_WIDTH}"></p>')
        points = [escape(point) for point in re.findall(r"^- (.*)$", body, re.MULTILINE)]
        marked = [re.sub(r"\*\*(.*?)\*\*", r"<b>\1</b>", point) for point in points]
        lines += ["<ul>", *(f"<li>{point}</li>" for point in marked), "</ul>"]
    return "\n".join(lines)


def write_topic(sources):
    file = HOME / "GWL HELP 2.1.HLP"
    head = '<h2 id="c225"><a name="c225">Getting started in pictures</a></h2>\n'
    before, _, rest = file.read_text(encoding="utf-8").partition(head)
    file.write_text(before + head + topic(sources) + "\n\n" + rest[rest.index("<h2 "):], encoding="utf-8")


if len(sys.argv) > 1:
    take_pictures(Path(sys.argv[1]))
slides = re.split(r"^# ", (DOCS / "gettingstarted.md").read_text(encoding="utf-8"), flags=re.MULTILINE)[1:]
write_topic(slides[1:])
pages = "".join(slide(number, len(slides), source) for number, source in enumerate(slides, 1))
with tempfile.TemporaryDirectory() as work:
    show = Path(work) / "gettingstarted.fodp"
    head = HEAD.format(width=WIDTH, height=HEIGHT, paragraphs=PARAGRAPHS)
    show.write_text(head + pages + "</office:presentation></office:body></office:document>", encoding="utf-8")
    subprocess.run(["soffice", f"-env:UserInstallation=file://{work}/profile", "--headless", "--convert-to", "pps",
                    "--outdir", work, show], check=True, stdout=subprocess.DEVNULL)
    (HOME / "gettingstarted.pps").write_bytes((Path(work) / "gettingstarted.pps").read_bytes())
