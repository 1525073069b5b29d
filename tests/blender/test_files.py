"""Exchange files whose names or places are odd."""

import cases


def test_a_name_as_long_as_names_can_be(results):
    result = results("long name")
    assert result.said == ["1 object received.", "1 object sent; import them in Dorvia."]
    assert result.found["files"] == [cases.LONG_NAME + ".vek"]
    assert result.host.bytes_back()[cases.LONG_NAME] == result.host.sent[result.host.line(
        cases.LONG_NAME)]


def test_a_file_that_is_a_link_is_written_where_it_leads(results):
    result = results("linked file")
    assert result.said[1] == "1 object sent; import them in Dorvia."
    assert result.found["link"] == result.host.root + "/real.vek"
    assert result.found["written"] and result.found["mode"] == 0o640
    assert not result.host.left_over()


def test_what_is_sent_again_after_an_undo_keeps_its_file(results):
    result = results("sent, undone, sent")
    assert result.said[1:] == ["2 objects sent; import them in Dorvia."] * 3
    assert result.found["files"] == ["Egg 0.001.vek", "Egg 0.vek", "New.vek"]
    assert result.found["place"] == 0
    assert sorted(result.host.names_back()) == ["Egg 0.001", "New"]


def test_the_panel_breaks_its_sentence_into_lines(results):
    assert results("paragraph").found["lines"] == [
        [""], ["one two", "three"], ["one two th", "ree"],
        ["/a/path/of", "/many/lett", "ers.vek is", "gone."]]
