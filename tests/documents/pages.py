"""The code blocks of a page: one after a line that is a file's name in backticks is that file."""
import re

BLOCK = re.compile(r"(?:^`([^`\n]+)`:\n\n)?^```(\w+)\n(.*?)^```$", re.M | re.S)


def blocks(page):
    """File name (empty for none), language and text of each block."""
    return BLOCK.findall(page.read_text("utf-8"))


def write_files(page, folder):
    """Writes the page's files and returns their names."""
    names = []
    for name, _, text in blocks(page):
        if name:
            (folder / name).parent.mkdir(parents=True, exist_ok=True)
            (folder / name).write_text(text)
            names.append(name)
    return names


def printed(page):
    """What the page says that its program prints: its one `text` block."""
    texts = [text for _, language, text in blocks(page) if language == "text"]
    if len(texts) != 1:
        raise SystemExit(f"{page} says {len(texts)} times what its program prints")
    return texts[0]
