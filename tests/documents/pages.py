"""The code blocks of a page: one after a line that is a file's name in backticks is that file. And
what it takes to try them: running commands."""
import re
import subprocess
from tempfile import TemporaryFile

BLOCK = re.compile(r"(?:^`([^`\n]+)`:\n\n)?^```(\w+)\n(.*?)^```$", re.M | re.S)


def blocks(page):
    """File name (empty for none), language and text of each block."""
    return BLOCK.findall(page.read_text("utf-8"))


def write_files(page, folder):
    """Writes the page's files and returns their names."""
    files = {name: text for name, _, text in blocks(page) if name}
    for name, text in files.items():
        (folder / name).parent.mkdir(parents=True, exist_ok=True)
        (folder / name).write_text(text)
    return list(files)


def printed(page):
    """What the page says that its program prints: its one `text` block."""
    text, = [text for _, language, text in blocks(page) if language == "text"]
    return text


def run(*command, given="", **more):
    """The output of a command that gets `given` to read; the error when it fails has it, too."""
    # Not a pipe: Wine's services, started with the first program, would keep it open.
    with TemporaryFile("w+") as written, TemporaryFile("w+", errors="replace") as output:
        written.write(given)
        written.seek(0)
        done = subprocess.run([str(part) for part in command], stdin=written, stdout=output,
                              stderr=subprocess.STDOUT, timeout=100, **more)
        output.seek(0)
        text = output.read()
    if done.returncode:
        raise AssertionError(f"{command} ended with {done.returncode}:\n{text}")
    return text
