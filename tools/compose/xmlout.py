"""A small XML writer with a fixed form: declared order of attributes, four blanks of indent, line feeds."""

from xml.sax.saxutils import escape


def _quoted(text):
    return '"' + escape(str(text), {'"': "&quot;", "\n": "&#10;", "\t": "&#9;"}) + '"'


class Element:
    def __init__(self, tag, attributes=None, text=None):
        self.tag = tag
        self.attributes = [(name, value) for name, value in (attributes or {}).items() if value is not None]
        self.text = text
        self.children = []

    def add(self, tag, attributes=None, text=None):
        child = Element(tag, attributes, text)
        self.children.append(child)
        return child

    def _lines(self, depth, lines):
        head = "    " * depth + "<" + self.tag + "".join(f" {name}={_quoted(value)}" for name, value in self.attributes)
        if self.text is not None:
            lines.append(f"{head}>{escape(str(self.text))}</{self.tag}>")
        elif self.children:
            lines.append(head + ">")
            for child in self.children:
                child._lines(depth + 1, lines)
            lines.append("    " * depth + f"</{self.tag}>")
        else:
            lines.append(head + "/>")

    def document(self):
        lines = ['<?xml version="1.0" encoding="UTF-8"?>']
        self._lines(0, lines)
        return "\n".join(lines) + "\n"
