"""Projects that somebody wrote to do harm, as the bodies of <mlt> elements. `folder` has the files they reach for."""

from xml.sax.saxutils import escape


def prop(name, value):
    return f'<property name="{name}">{escape(value)}</property>'


def showing(service, resource, inside=""):
    kind = prop("mlt_service", service) if service else ""
    return (
        f'<producer id="p" out="9">{kind}{prop("resource", resource)}{inside}</producer>'
        '<playlist id="t"><entry producer="p" in="0" out="9"/></playlist>'
    )


def effect(service, **settings):
    inside = prop("mlt_service", service) + "".join(
        prop(name.replace("__", "."), value) for name, value in settings.items()
    )
    return showing("color", "red", f"<filter>{inside}</filter>")


def transition(service, **settings):
    inside = prop("mlt_service", service) + prop("a_track", "0") + prop("b_track", "1")
    inside += "".join(prop(name, value) for name, value in settings.items())
    return (
        showing("color", "red")
        + f'<tractor id="m" out="9"><track producer="t"/><track producer="t"/>'
        f"<transition>{inside}</transition></tractor>"
    )


def effects(folder, port):
    so, out = f"{folder}/x.so", f"{folder}/x.txt"
    net = f"127.0.0.1:{port}"
    yield effect(f"sox:ladspa {so} x")
    yield effect("sox", effect=f"ladspa {so} x")
    yield effect("sox.ladspa", **{"0": so})
    yield effect(f"ladspa:{so}")
    yield effect("ladspa.1048674", resource=so)
    yield effect(f"jackrack:{folder}/x.html", src=f"{folder}/x.html")
    yield effect("jack")
    yield effect("lv2.http://example.net/x", **{"0": "1"})
    yield effect("vst2.1", **{"0": so})
    yield effect(f"vidstab:{out}", filename=out)
    yield effect("vidstab", filename=out, results=out)
    yield effect("avfilter.vidstabdetect", av__result=out)
    yield effect("avfilter.metadata", av__mode="print", av__file=out)
    yield effect("avfilter.ametadata", av__mode="print", av__file=out)
    yield effect("avfilter.zmq", av__bind_address=f"tcp://{net}")
    yield effect("avfilter.azmq", av__bind_address=f"tcp://{net}")
    yield effect("avfilter.movie", av__filename=f"http://{net}/")
    yield effect("avfilter.amovie", av__filename=f"http://{net}/")
    yield effect("avfilter.subtitles", av__filename=f"{folder}/secret")
    yield effect("avfilter.ass", av__filename=f"{folder}/secret")
    yield effect("avfilter.drawtext", av__textfile=f"{folder}/secret", av__text="x")
    yield effect("avfilter.lut3d", av__file=f"{folder}/secret")
    yield effect("avfilter.frei0r", av__filter_name=so)
    yield effect("avfilter.ladspa", av__file=so)
    yield effect("avfilter.signature", av__filename=out)
    yield effect("avfilter.ssim", av__stats_file=out)
    yield effect("avfilter.psnr", av__stats_file=out)
    yield effect("avfilter.libvmaf", av__log_path=out)
    yield effect("avfilter.exposure", av__exposure=f"1,metadata=print:file={out}")
    yield effect("avfilter.sendcmd", av__filename=f"{folder}/secret")
    yield effect("opencv.tracker", results=out)
    yield effect("watermark", resource=f"http://{net}/x.png")
    yield effect(f"watermark:xml:{folder}/x.mlt")
    yield effect("dynamictext", argument=f"#resource#{folder}/secret")
    yield effect("text", argument="x", geometry=f"@{folder}/secret")
    yield effect("shape", resource=f"{folder}/secret")
    yield effect("luma", resource=f"http://{net}/x.pgm")
    yield effect("region", resource=f"{folder}/x.mlt", filter="sox:ladspa " + so)
    yield effect("mask_start", filter=f"sox:ladspa {so}")
    yield effect("mask_apply", transition=f"composite:{out}")
    yield effect("brightness", level=f"@{folder}/secret", properties=out)
    yield effect("volume", level="0", mlt_service="sox", argument=so)
    yield effect("fft", debug=out)
    yield effect("loudness", results=out, program="-23")
    yield effect("../../" + so)


def clips(folder, port):
    out, net = f"{folder}/x.txt", f"127.0.0.1:{port}"
    for service, resource in (
        ("loader", f"http://{net}/x.mp4"),
        ("timewarp", f"2:http://{net}/x.mp4"),
        ("timewarp", f"2:{folder}/x.mlt"),
        ("xml", f"{folder}/x.mlt"),
        ("xml-string", "<mlt><producer/></mlt>"),
        ("xml-nogl", f"http://{net}/x.mlt"),
        ("consumer", f"{folder}/x.mlt"),
        ("melt", f"noise: -consumer avformat:{out}"),
        ("melt_file", f"{folder}/x.melt"),
        ("framebuffer", f"{folder}/x.mlt?2"),
        ("kdenlivetitle", f"{folder}/x.mlt"),
        ("glaxnimate", f"{folder}/secret"),
        ("qtext", f"{folder}/secret"),
        ("decklink", "0"),
        ("color:xml", f"{folder}/x.mlt"),
        ("avformat", f"concat:{folder}/secret|{folder}/x.so"),
        ("avformat", f"subfile,,start,0,end,9,,:{folder}/secret"),
        ("avformat", f"crypto+file:{folder}/secret"),
        ("avformat", f"tee:{out}"),
        ("avformat", f"lavfi:movie={folder}/secret"),
        ("avformat", f"tcp://{net}"),
        ("avformat", f"rtsp://{net}/x"),
        ("avformat", "video4linux2:/dev/video0"),
        ("avformat", "x11grab::0"),
        ("avformat-novalidate", f"http://{net}/x.mp4"),
        ("pixbuf", f"{folder}/%s%n.png"),
        ("pixbuf", f"{folder}/.all.png"),
        ("qimage", f"http://{net}/x.png"),
        ("", "/dev/zero"),
        ("", "/proc/self/environ"),
        ("", f"{folder}/pipe.mp4"),
        ("", f"{folder}/list.m3u8"),
        ("", f"{folder}/list.ffconcat"),
        ("", f"{folder}/list.mp4"),
        ("", f"{folder}/x.sdp"),
        ("", f"http://{net}/x.mp4"),
        ("", f"file://{folder}/secret"),
        ("", "\\\\127.0.0.1\\share\\x.mp4"),
    ):
        yield showing(service, resource)


def transitions(folder, port):
    out = f"{folder}/x.txt"
    yield transition("luma", resource=f"http://127.0.0.1:{port}/x.pgm")
    yield transition("luma:" + out)
    yield transition("composite", luma=f"{folder}/x.mlt")
    yield transition("region", composite__luma=f"{folder}/x.mlt", filter=f"sox:ladspa {folder}/x.so")
    yield transition("qtblend:" + out)
    yield transition("vqm", render=out)


def documents(folder, port):
    """Whole files, for what hides outside the elements of a project."""
    body = showing("color", "red")
    yield f'<!DOCTYPE mlt [<!ENTITY e SYSTEM "file://{folder}/secret">]><mlt>{showing("color", "&e;")}</mlt>'.replace(
        "&amp;e;", "&e;"
    )
    yield f'<!DOCTYPE mlt SYSTEM "http://127.0.0.1:{port}/x.dtd"><mlt>{body}</mlt>'
    yield f'<mlt root="http://127.0.0.1:{port}/">{showing("", "x.mp4")}</mlt>'
    yield f'<mlt>{body}<consumer mlt_service="avformat" target="{folder}/x.txt"/></mlt>'
    yield f'<mlt>{body}<consumer>{prop("mlt_service", "xml")}{prop("resource", folder + "/x.txt")}</consumer></mlt>'
    yield f'<mlt>{body}<link>{prop("mlt_service", "avfilter.zmq")}</link></mlt>'
    lol = "".join(f'<!ENTITY l{i} "{f"&l{i - 1};" * 10}">' for i in range(1, 9))
    yield f'<!DOCTYPE mlt [<!ENTITY l0 "lol">{lol}]><mlt title="&l8;">{body}</mlt>'


def all_projects(folder, port):
    for bodies in (effects, clips, transitions):
        for body in bodies(folder, port):
            yield f'<mlt><profile width="64" height="36" frame_rate_num="25" frame_rate_den="1"/>{body}</mlt>'
    yield from documents(folder, port)
