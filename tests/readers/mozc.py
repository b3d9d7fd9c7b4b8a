#!/usr/bin/python3
"""A user dictionary in mozc: Debian's server, spoken to as its dictionary tool and its clients do.

usage: mozc.py FOLDER < DICTIONARY
Writes how the dictionary was taken and how many entries of it are stored, then types each reading
and writes it with every candidate: READING<TAB>WORD<TAB>COMMENT. mozc offers many symbols by itself;
these have no comment. The first reading must have one.

Messages are protocol buffers, of which a few fields are put together and taken apart here, by
the numbers of mozc's protocol/commands.proto, candidates.proto and user_dictionary_storage.proto.
"""

import os
import pathlib
import socket
import subprocess
import sys
import time

SERVER = "/usr/lib/mozc/mozc_server"
PATIENCE = 30  # seconds
CREATE_SESSION, DELETE_SESSION, SEND_KEY, RELOAD, USER_DICTIONARY = 1, 2, 3, 10, 26
OPEN_STORAGE, SAVE, ENTRY_SIZE, IMPORT = 2, 8, 10, 20
ON, SPACE, PAGE_DOWN = 2, 4, 32
STATUS = {1: "taken", 26: "too many words", 27: "invalid entries"}


def varint(number):
    return bytes([number]) if number < 0x80 else bytes([number & 0x7F | 0x80]) + varint(number >> 7)


def message(fields):
    """@param fields  by their numbers: a number, text, or the fields of a message"""
    data = b""
    for number, value in fields.items():
        if isinstance(value, int):
            data += varint(number << 3) + varint(value)
        else:
            content = message(value) if isinstance(value, dict) else value.encode()
            data += varint(number << 3 | 2) + varint(len(content)) + content
    return data


def fields_of(data):
    """Lists of numbers and bytes by the numbers of the fields; groups, which mozc has, as messages."""

    def number(place):
        value = shift = 0
        while True:
            byte = data[place]
            value |= (byte & 0x7F) << shift
            place, shift = place + 1, shift + 7
            if byte < 0x80:
                return value, place

    def read(place, end_of_group=None):
        fields = {}
        while place < len(data):
            tag, place = number(place)
            field, kind = tag >> 3, tag & 7
            if kind == 4:
                assert field == end_of_group
                break
            if kind == 0:
                value, place = number(place)
            elif kind == 3:
                value, place = read(place, field)
            else:
                length, place = (8 if kind == 1 else 4, place) if kind in (1, 5) else number(place)
                value, place = data[place : place + length], place + length
            fields.setdefault(field, []).append(value)
        return fields, place

    return read(0)[0]


class Mozc:
    """@param folder  for its files. For root it does nothing."""

    def __init__(self, folder):
        own = {"HOME": str(folder), "XDG_CONFIG_HOME": str(folder)}
        # It ends with this process, however this ends.
        self.process = subprocess.Popen(["setpriv", "--pdeathsig", "KILL", SERVER], env=os.environ | own)
        told = folder / "mozc/.session.ipc"
        self.wait("it does not start", lambda: told.exists() and told.read_bytes())
        self.address = f"\0tmp/.mozc.{fields_of(told.read_bytes())[1][0].decode()}.session"
        self.storage = self.dictionary({1: OPEN_STORAGE})[2][0]

    def wait(self, otherwise, until):
        end = time.time() + PATIENCE
        while not (found := until()):
            assert time.time() < end and self.process.poll() is None, otherwise
            time.sleep(0.02)
        return found

    def call(self, fields):
        """One command. @return the fields of its output"""
        with socket.socket(socket.AF_UNIX) as server:
            server.settimeout(PATIENCE)
            server.connect(self.address)
            server.sendall(message(fields))
            server.shutdown(socket.SHUT_WR)
            answer = b"".join(iter(lambda: server.recv(65536), b""))
        return fields_of(answer)

    def dictionary(self, fields):
        return fields_of(self.call({1: USER_DICTIONARY, 13: fields})[21][0])

    def take(self, text):
        """Imports the text form of a dictionary. @return what mozc says, and how many entries it has"""
        told = self.dictionary({1: IMPORT, 2: self.storage, 4: "kigou", 7: text})
        assert 5 in told, f"no dictionary comes of it: {told}"
        assert self.dictionary({1: SAVE, 2: self.storage})[1] == [1]
        self.call({1: RELOAD})
        entries = self.dictionary({1: ENTRY_SIZE, 2: self.storage, 3: told[5][0]})[6][0]
        return STATUS.get(told[1][0], told[1][0]), entries

    def offered(self, reading):
        """@return the words in all pages of its window, each with its comment"""
        session = self.call({1: CREATE_SESSION})[1][0]
        for key in ({3: ON}, *({5: kana} for kana in reading), {3: SPACE}, {3: SPACE}):
            output = self.call({1: SEND_KEY, 2: session, 3: key})
        words = {}
        while True:
            window = fields_of(output.get(6, [b""])[0])
            page = {candidate[4][0]: candidate[5][0].decode() for candidate in window.get(3, [])}
            if page.keys() <= words.keys():  # behind the last page is the first one
                break
            told = [fields_of(one) for usages in window.get(10, []) for one in fields_of(usages).get(2, [])]
            comments = {one[2][0].decode(): one.get(3, [b""])[0].decode() for one in told}
            words |= {index: (word, comments.get(word, "")) for index, word in page.items()}
            output = self.call({1: SEND_KEY, 2: session, 3: {3: PAGE_DOWN}})
        self.call({1: DELETE_SESSION, 2: session})
        return list(words.values())


if __name__ == "__main__":
    mozc = Mozc(pathlib.Path(sys.argv[1]))
    try:
        text = sys.stdin.read()
        print(*mozc.take(text), sep="\t")
        readings = list(dict.fromkeys(line.split("\t")[0] for line in text.splitlines()))
        # It reads them anew beside its work.
        mozc.wait("nothing of it is offered", lambda: any(comment for _, comment in mozc.offered(readings[0])))
        for reading in readings:
            for word, comment in mozc.offered(reading):
                print(reading, word, comment, sep="\t")
    finally:
        mozc.process.kill()
        mozc.process.wait()
