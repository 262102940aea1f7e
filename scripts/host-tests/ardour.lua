-- Ardour without a window: one stereo track with the plug-in on it. Run by ardour.sh, which says what to do by
-- environment variables, as no arguments reach a script:
--   PHASE    "record" or "recall"
--   SESSION  the session's folder
--   FMT, ID  the plug-in's format (LV2, VST3) and its id there
--   LIVE     record: twelve values in address order, to be heard while the signal comes in
--   LEVEL    record: what the meter must show with them, in dB
--   KEPT     twelve values: saved with the session (record), expected back (recall)
-- Prints "ok: ..." for each fact shown and stops with an error at the first that does not hold.
io.stdout:setvbuf("no")

local kRate = 48000
local kFormats = { LV2 = ARDOUR.PluginType.LV2, VST3 = ARDOUR.PluginType.VST3 }

local function numbers(name)
  local list = {}
  for word in assert(os.getenv(name), name .. " is not set"):gmatch("%S+") do
    list[#list + 1] = assert(tonumber(word))
  end
  return list
end

-- Looks every 50 ms until the condition holds; an error after that many seconds.
local function await(what, seconds, condition)
  for _ = 1, seconds * 20 do
    if condition() then
      return
    end
    ARDOUR.LuaAPI.usleep(50000)
  end
  error("waited in vain for " .. what)
end

local function ok(fact)
  print("ok: " .. fact)
end

local function startEngine(device)
  local backend = AudioEngine:set_backend("None (Dummy)", "", "")
  backend:set_driver("Normal Speed")
  backend:set_device_name(device)
  backend:set_sample_rate(kRate)
  backend:set_buffer_size(256)
end

local function setControl(control, value)
  control:set_value(value, PBD.GroupControlDisposition.NoGroup)
end

local function setParameters(plugin, values)
  for i, value in ipairs(values) do
    assert(ARDOUR.LuaAPI.set_processor_param(plugin, i - 1, value), "parameter " .. i - 1 .. " cannot be set")
  end
end

local function checkParameters(plugin, values)
  for i, value in ipairs(values) do
    local got = ARDOUR.LuaAPI.get_processor_param(plugin, i - 1, true)
    assert(math.abs(got - value) < 1e-6, string.format("parameter %d is %.7f, not %.7f", i - 1, got, value))
  end
end

local function onlyRegion(track)
  local found
  for region in track:playlist():region_list():iter() do
    assert(not found, "more than one region")
    found = region
  end
  return assert(found, "no region")
end

local function record()
  startEngine("DC -6dBFS (+.5)")
  local session = create_session(os.getenv("SESSION"), "sess", kRate)
  local track
  for t in session:new_audio_track(2, 2, nil, 1, "t", ARDOUR.PresentationInfo.max_order, ARDOUR.TrackMode.Normal, true):iter() do
    track = t
  end
  local plugin = ARDOUR.LuaAPI.new_plugin(session, os.getenv("ID"), kFormats[os.getenv("FMT")], "")
  assert(not plugin:isnil(), "the plug-in was not found")
  assert(track:add_processor_by_index(plugin, 0, nil, true) == 0, "the plug-in was not added")
  ok "loaded"

  track:input():audio(0):connect("system:capture_1")
  track:input():audio(1):connect("system:capture_2")
  setControl(track:monitoring_control(), 1) -- the input
  track:set_meter_point(ARDOUR.MeterPoint.MeterOutput)
  setParameters(plugin, numbers("LIVE"))
  local expected = numbers("LEVEL")[1]
  local level
  -- The peak since the meter was reset, so that a gain still on its way shows and is waited out.
  local settled = pcall(await, "the level", 3, function()
    track:peak_meter():reset_max()
    ARDOUR.LuaAPI.usleep(100000)
    level = track:peak_meter():meter_level(0, ARDOUR.MeterType.MeterMaxPeak)
    return math.abs(level - expected) < 0.005
  end)
  assert(settled, string.format("the meter shows %.4f dB, not %.4f dB", level, expected))
  ok(string.format("level %.4f dB as computed", level))

  setControl(track:rec_enable_control(), 1)
  session:maybe_enable_record()
  session:request_roll(ARDOUR.TransportRequestSource.TRS_UI)
  await("the recording", 20, function() return session:transport_sample() > 3 * kRate end)
  session:request_stop(false, false, ARDOUR.TransportRequestSource.TRS_UI)
  await("the recorded region", 10, function()
    return session:transport_stopped() and not session:actively_recording() and track:playlist():n_regions() == 1
  end)
  setControl(track:rec_enable_control(), 0)
  setControl(track:monitoring_control(), 2) -- what is on the disk
  setParameters(plugin, numbers("KEPT"))
  checkParameters(plugin, numbers("KEPT"))
  ARDOUR.LuaAPI.usleep(500000) -- a VST3 plug-in, whose state is saved, gets them with one of its next blocks (5 ms each)
  local region = onlyRegion(track):to_audioregion()
  region:set_fade_in_active(false) -- what is bounced is the file as it lies there
  region:set_fade_out_active(false)
  print("frames " .. onlyRegion(track):length():samples())
  assert(session:save_state("") == 0, "not saved")
  ok "recorded and saved"
end

local function recall()
  startEngine("Silence")
  local session = assert(load_session(os.getenv("SESSION"), "sess"), "the session does not load")
  local track = session:route_by_name("t"):to_track()
  local plugin = track:nth_plugin(0)
  assert(not plugin:isnil(), "the plug-in is not in the session")
  checkParameters(plugin, numbers("KEPT"))
  ok "all values back"
  local frames = onlyRegion(track):length():samples()
  local bounced = track:bounce_range(0, frames, ARDOUR.InterThreadInfo(), plugin, true, "bounced")
  assert(not bounced:isnil() and bounced:length():samples() == frames, "not bounced")
  ok "bounced"
end

local phases = { record = record, recall = recall }
phases[os.getenv("PHASE")]()
close_session()
quit()
